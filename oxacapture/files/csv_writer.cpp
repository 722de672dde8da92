// SPDX-License-Identifier: Apache-2.0
#include "files/fail.h"
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/csv_columns.h"
#include "oxacapture/files/every_sample.h"
#include "oxacapture/files/time_axis.h"
#include "oxacapture/waveform/time_unit.h"
#include "oxacapture/waveform/unique_names.h"

#include <QHash>
#include <QIODevice>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kFlushAt = 1 << 20; // bytes
constexpr qint64 kMostRows = qint64(1) << 24; // of samples that were not stored, for a core

// Spreadsheets evaluate such text, even in quotes, unless an apostrophe is before it. For some,
// semicolons and tabs separate cells.
QString withoutFormulas(QString text)
{
    static const QRegularExpression beginning("(^|[;\t\r\n])(?=[=+\\-@'\t\r\n])");
    return text.replace(beginning, "\\1'");
}

QByteArray cell(const QString& name)
{
    static const QRegularExpression special("[,;\"\t\r\n]");
    QString text = withoutFormulas(name);
    if (text != name || text.contains(special))
        text = '"' + text.replace('"', "\"\"") + '"';
    return text.toUtf8();
}

// The data signals of a core; with `bits`, each bit as a signal.
QList<OXA::SignalItem> shownItems(const CapturedCore& core, bool bits)
{
    if (!bits)
        return core.items;
    QList<OXA::SignalItem> items;
    for (const QString& name : OXA::flattenedNames(core.items)) {
        items += OXA::SignalItem();
        items.last().name = name;
    }
    return items;
}

// A column, with another one for the names of its values when it has some.
struct Column {
    OXA::SignalItem item;
    QStringList bits;
    QHash<QByteArray, QByteArray> states; // cells by digits
};

Column columnOf(const OXA::SignalItem& item, const CaptureFileOptions& options)
{
    Column column {item, OXA::flattenedNames({item}), {}};
    const QHash<QString, QString> states = OXA::statesOf(options.states, column.bits);
    for (auto state = states.begin(); state != states.end() && !options.bits; ++state)
        column.states.insert(state.key().toLatin1(), cell(*state));
    return column;
}

// The data signals of all cores, those of the same bits once.
std::vector<Column> columnsOf(const Capture& capture, const CaptureFileOptions& options)
{
    std::vector<Column> columns;
    QSet<QStringList> shown;
    for (const CapturedCore& core : capture) {
        for (const OXA::SignalItem& item : shownItems(core, options.bits)) {
            const Column column = columnOf(item, options);
            if (!shown.contains(column.bits))
                columns.push_back(column);
            shown += column.bits;
        }
    }
    return columns;
}

// The columns in front of the signals that not every table has.
struct OwnColumns {
    bool forced = false;
    bool stamp = false;
    bool time = false;
};

QByteArray header(const std::vector<Column>& columns, const OwnColumns& own, bool bits)
{
    QStringList cells {"core", "window", "sample", "trigger"};
    if (own.forced)
        cells += kForcedColumn;
    if (own.stamp)
        cells += kStampColumn;
    if (own.time)
        cells += "time";
    UniqueNames names;
    for (const QString& name : cells)
        names.take(name);
    QByteArray text = cells.join(',').toUtf8();
    for (const Column& column : columns) {
        text += ',' + cell(bits ? column.item.name : names.take(column.item.name));
        if (!column.states.isEmpty())
            text += ',' + cell(names.take(column.item.name + " name"));
    }
    return text + '\n';
}

// A column as one core has it.
struct CoreColumn {
    const Column* column;
    int firstBit; // of the core's samples; -1: the core does not capture it
};

std::vector<CoreColumn> columnsIn(
    const CapturedCore& core, const std::vector<Column>& columns, bool bits)
{
    QHash<QStringList, int> places;
    int bit = 0;
    for (const OXA::SignalItem& item : shownItems(core, bits)) {
        const QStringList names = OXA::flattenedNames({item});
        if (!places.contains(names))
            places.insert(names, bit);
        bit += item.bitCount();
    }
    std::vector<CoreColumn> result;
    result.reserve(columns.size());
    for (const Column& column : columns)
        result.push_back({&column, places.value(column.bits, -1)});
    return result;
}

// A digit for each bit.
QByteArray digitsOf(const SampleTable& samples, qint64 sample, const CoreColumn& column)
{
    QByteArray digits;
    for (int bit = 0; bit < column.column->bits.size(); ++bit)
        digits += "01x"[int(samples.bit(sample, 0, column.firstBit + bit))];
    return digits;
}

void addCells(const SampleTable& samples, qint64 sample, const std::vector<CoreColumn>& columns,
    QByteArray& text)
{
    for (const CoreColumn& column : columns) {
        const bool isCaptured = column.firstBit >= 0;
        const QByteArray digits = isCaptured ? digitsOf(samples, sample, column) : QByteArray();
        text += ',';
        if (isCaptured && column.column->item.isBus())
            addHexadecimal(digits, text += "0x");
        else
            text += digits;
        if (!column.column->states.isEmpty())
            text += ',' + column.column->states.value(digits);
    }
}

// The times of a core's samples: those of the waveform or of the run, or since the first sample of
// their window when distances between windows are not known.
class TimeCells {
public:
    TimeCells(const Capture& capture, size_t place, const TimeAxis& axis, bool shown)
        : m_core(capture[place])
        , m_place(place)
        , m_axis(axis)
        , m_decimals(std::max(-timeExponentFor(m_core.clockHz), 0))
        , m_shown(shown)
    {
    }

    void add(size_t number, qint64 sample, QByteArray& text) const
    {
        const CapturedWindow& window = m_core.windows[number];
        if (m_shown)
            text += ',';
        if (m_shown && m_axis.kind() == TimeKind::Window && m_axis.isOfRun())
            text += secondsText(m_axis.at(m_place, number, sample), m_axis.exponent());
        else if (m_shown && !window.times.empty())
            text += secondsText(
                window.times[size_t(window.place.offset(sample))], m_core.timeExponent);
        else if (m_shown && m_core.clockHz > 0 && m_core.knowsGaps())
            text += QByteArray::number(
                double(window.place.offset(sample)) / m_core.clockHz, 'f', m_decimals);
    }

private:
    const CapturedCore& m_core;
    size_t m_place;
    const TimeAxis& m_axis;
    int m_decimals;
    bool m_shown; // there is a column
};

// The cells of a window's own columns, in the row of its trigger sample or in another one.
QByteArray windowCells(const Window& window, bool isTrigger, const OwnColumns& own)
{
    QByteArray text = isTrigger ? ",1" : ",0";
    if (own.forced)
        text += isTrigger && window.forced ? ",1" : ",0";
    if (own.stamp)
        text += ',' + (window.stamp ? QByteArray::number(*window.stamp) : QByteArray());
    return text;
}

bool hasTimes(const CapturedCore& core)
{
    return core.clockHz > 0 || (!core.windows.empty() && !core.windows.front().times.empty());
}

bool writeRows(QIODevice& out, const CapturedCore& core, const OwnColumns& own,
    const TimeCells& times, const std::vector<CoreColumn>& columns,
    const std::function<bool(qint64 sample)>& goesOn)
{
    QByteArray text;
    qint64 done = 0;
    for (size_t w = 0; w < core.windows.size(); ++w) {
        const CapturedWindow& window = core.windows[w];
        const QByteArray head = QByteArray::number(core.index) + ',' + QByteArray::number(int(w));
        for (qint64 sample = 0; sample < window.samples.size(); ++sample) {
            text += head + ',' + QByteArray::number(window.place.offset(sample))
                + windowCells(window.place, sample == window.triggerOffset(), own);
            times.add(w, sample, text);
            addCells(window.samples, sample, columns, text);
            text += '\n';
            if (++done % kSamplesAtOnce != 0 && text.size() < kFlushAt)
                continue;
            if (!goesOn(done) || out.write(text) != text.size())
                return false;
            text.clear();
        }
    }
    return out.write(text) == text.size();
}

}

bool writeCsv(QIODevice& out, const Capture& stored, const Progress& goesOn,
    const CaptureFileOptions& options, QString* error)
{
    Capture everySample = options.every ? stored : Capture();
    for (CapturedCore& core : everySample) {
        if (!addPassedOver(core, kMostRows))
            return OXA::fail(error,
                QString("all samples would be more than %1 rows for core %2")
                    .arg(QString::number(kMostRows), QString::number(core.index)));
    }
    const Capture& capture = options.every ? everySample : stored;

    const std::vector<Column> columns = columnsOf(capture, options);
    const TimeAxis axis(capture);
    OwnColumns own;
    for (const CapturedCore& core : capture) {
        own.forced = own.forced || core.showsForced();
        own.stamp = own.stamp || core.hasStamps();
        own.time = own.time || hasTimes(core);
    }
    if (out.write(header(columns, own, options.bits)) < 0)
        return false;
    qint64 samples = 0;
    for (const CapturedCore& core : capture)
        samples += capturedSamples(core);
    qint64 before = 0;
    for (size_t place = 0; place < capture.size(); ++place) {
        const CapturedCore& core = capture[place];
        const auto tell = [&](qint64 done) { return goesOn(int((before + done) * 100 / samples)); };
        if (!writeRows(out, core, own, {capture, place, axis, own.time},
                columnsIn(core, columns, options.bits), tell))
            return false;
        before += capturedSamples(core);
    }
    return true;
}

}
