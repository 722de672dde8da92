// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/csv_reader.h"

#include "files/fail.h"
#include "oxacapture/files/capture_limits.h"
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/csv_columns.h"
#include "oxacapture/files/csv_core.h"
#include "oxacapture/files/csv_records.h"
#include "oxacapture/files/csv_times.h"

#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kMostIndex = 1 << 20; // of cores

// In their order; those from `OwnColumns` on may be missing.
enum OwnColumn {
    Core,
    WindowNumber,
    Sample,
    Trigger,
    OwnColumns,
    Forced = OwnColumns,
    Stamp,
    Time
};
constexpr const char* kOwnNames[]
    = {"core", "window", "sample", "trigger", kForcedColumn, kStampColumn, "time"};

// The name of a signal, whose cell has apostrophes before what looks like a formula.
QString nameOf(const QByteArray& cell)
{
    static const QRegularExpression mark("(^|[;\t\r\n])'(?=[=+\\-@'\t\r\n])");
    return QString::fromUtf8(cell).replace(mark, "\\1");
}

// Whether a column has the names of values of the one before.
bool namesValues(const QString& name, const QString& before)
{
    if (before.isEmpty())
        return false;
    static const QRegularExpression number("_\\d+$");
    const QString base = QString(name).remove(number);
    return base == before + " name" || base == QString(before).remove(number) + " name";
}

class CsvReading {
public:
    /// Each reads a row. False, with `error`, for one that the table cannot have.
    bool takeHeader(const std::vector<QByteArray>& cells, QString* error);
    bool takeRow(const std::vector<QByteArray>& cells, QString* error);

    Capture finish();

private:
    bool beginCore(int index, const std::vector<QByteArray>& cells, QString* error);
    void beginWindow();
    void passOver(qint64 number);
    bool takePlace(const std::vector<QByteArray>& cells, bool& triggers, QString* error);
    bool takeMarks(const std::vector<QByteArray>& cells, QString* error);
    bool takeTime(const std::vector<QByteArray>& cells, QString* error);
    const QByteArray* cellOf(OwnColumn column, const std::vector<QByteArray>& cells) const;
    bool addTime(quint64 time, std::vector<quint64>& times, QString* error);

    QStringList m_names; // of the columns; empty for those that are no signals
    QMap<OwnColumn, size_t> m_own; // where columns are that may be missing
    std::vector<CsvCore> m_cores;
    qint64 m_words = 0;
};

bool CsvReading::takeHeader(const std::vector<QByteArray>& cells, QString* error)
{
    for (size_t i = 0; i < OwnColumns; ++i) {
        if (i >= cells.size() || cells[i] != kOwnNames[i])
            return OXA::fail(error,
                "the columns are not those of a capture: core, window, sample,"
                " trigger, then its signals, separated by commas");
    }
    size_t own = OwnColumns;
    for (const OwnColumn column : {Forced, Stamp, Time}) {
        if (own < cells.size() && cells[own] == kOwnNames[column])
            m_own.insert(column, own++);
    }
    QString before;
    for (size_t i = 0; i < cells.size(); ++i) {
        const bool isOwn = i < own;
        const QString name = nameOf(cells[i]);
        const bool isSignal = !isOwn && !namesValues(name, before);
        m_names += isSignal ? name : QString();
        before = isSignal ? name : QString();
        if (isSignal && name.isEmpty())
            return OXA::fail(error, QString("column %1 has no name").arg(i + 1));
    }
    return true;
}

/// The cell of a column that may be missing; null without it.
const QByteArray* CsvReading::cellOf(OwnColumn column, const std::vector<QByteArray>& cells) const
{
    const auto at = m_own.find(column);
    return at == m_own.end() ? nullptr : &cells[*at];
}

bool CsvReading::beginCore(int index, const std::vector<QByteArray>& cells, QString* error)
{
    for (const CsvCore& other : m_cores) {
        if (other.core.index == index)
            return OXA::fail(
                error, QString("core %1 is not together with its rows before").arg(index));
    }
    m_cores.emplace_back();
    m_cores.back().core.index = index;
    const QByteArray* time = cellOf(Time, cells);
    m_cores.back().timed = time && !time->isEmpty();
    return m_cores.back().begin(m_names, cells, error);
}

void CsvReading::beginWindow()
{
    CsvCore& reading = m_cores.back();
    reading.core.windows.emplace_back();
    reading.core.windows.back().samples = SampleTable(reading.layout);
    m_words += qint64(sizeof(CapturedWindow) / sizeof(quint64));
}

/// The next row is that of sample `number`; those between were not stored.
void CsvReading::passOver(qint64 number)
{
    CapturedCore& core = m_cores.back().core;
    Window& place = core.windows.back().place;
    while (qint64(place.stored.size()) < place.samples) // all so far were consecutive
        place.stored.push_back(qint64(place.stored.size()));
    place.stored.push_back(number);
    core.storage.keep = OXA::CoreStorage::When; // what was between is not known
}

/// Finds the core and the window of a row, whose sample is a later one of the window.
bool CsvReading::takePlace(const std::vector<QByteArray>& cells, bool& triggers, QString* error)
{
    int numbers[OwnColumns];
    for (size_t i = 0; i < OwnColumns; ++i) {
        bool ok = false;
        numbers[i] = cells[i].toInt(&ok);
        if (!ok || numbers[i] < 0 || (i == Core && numbers[i] > kMostIndex)
            || (i == Trigger && numbers[i] > 1))
            return OXA::fail(error, QString("%1 cannot be \"%2\"").arg(kOwnNames[i], cells[i]));
    }
    const bool isNew = m_cores.empty() || m_cores.back().core.index != numbers[Core];
    if (isNew && !beginCore(numbers[Core], cells, error))
        return false;
    std::vector<CapturedWindow>& windows = m_cores.back().core.windows;
    if (numbers[WindowNumber] == int(windows.size()))
        beginWindow();
    const qint64 sample = windows.empty() ? 0 : windows.back().place.span();
    if (numbers[WindowNumber] + 1 != int(windows.size()) || numbers[Sample] < sample
        || (sample == 0 && numbers[Sample] != 0))
        return OXA::fail(error, "is not a sample behind that of the row before");
    if (numbers[Sample] > sample || !windows.back().place.stored.empty())
        passOver(numbers[Sample]);
    triggers = numbers[Trigger] == 1;
    return !triggers || windows.back().place.triggerSample == kNoSample
        || OXA::fail(error, "is the second trigger of its window");
}

/// Adds the time of the row's sample, and those of samples passed over in front of it, which are
/// as long.
bool CsvReading::addTime(quint64 time, std::vector<quint64>& times, QString* error)
{
    const std::vector<qint64>& stored = m_cores.back().core.windows.back().place.stored;
    const qint64 passed = stored.empty() ? 0 : stored.back() - qint64(times.size());
    m_words += passed;
    if (m_words > kMostWords)
        return OXA::fail(error, "has too many samples");
    OXA_CAPTURE::addTime(time, passed, times);
    return true;
}

/// Reads whether another core forced the window of the row, and its stamp.
bool CsvReading::takeMarks(const std::vector<QByteArray>& cells, QString* error)
{
    Window& window = m_cores.back().core.windows.back().place;
    const QByteArray* forced = cellOf(Forced, cells);
    const QByteArray* stamp = cellOf(Stamp, cells);
    if (forced && *forced != "0" && *forced != "1")
        return OXA::fail(error, QString("%1 cannot be \"%2\"").arg(kForcedColumn, *forced));
    window.forced = window.forced || (forced && *forced == "1");
    if (!stamp || stamp->isEmpty())
        return true;
    bool ok = false;
    window.stamp = stamp->toUInt(&ok);
    return ok || OXA::fail(error, QString("%1 cannot be \"%2\"").arg(kStampColumn, *stamp));
}

bool CsvReading::takeTime(const std::vector<QByteArray>& cells, QString* error)
{
    CsvCore& reading = m_cores.back();
    const QByteArray* cell = cellOf(Time, cells);
    if (!cell || (!reading.timed && cell->isEmpty()))
        return true;
    quint64 time = 0;
    int decimals = 0;
    if (!readSeconds(*cell, time, decimals))
        return OXA::fail(error,
            QString(
                "time cannot be \"%1\", only seconds such as 0.000020, with 15 decimals at most")
                .arg(QString(*cell)));
    std::vector<quint64>& times = reading.core.windows.back().times;
    const bool isFirst = times.empty() && reading.core.windows.size() == 1;
    if (isFirst)
        reading.core.timeExponent = -decimals;
    if (!reading.timed || reading.core.timeExponent != -decimals)
        return OXA::fail(error, "time has other decimals than in the core's row before");
    if (!times.empty() && time <= times.back())
        return OXA::fail(error, "time is not later than in the row before");
    return addTime(time, times, error);
}

bool CsvReading::takeRow(const std::vector<QByteArray>& cells, QString* error)
{
    if (int(cells.size()) != m_names.size())
        return OXA::fail(error,
            QString("has %1 cells, the first row %2")
                .arg(QString::number(cells.size()), QString::number(m_names.size())));
    bool triggers = false;
    if (!takePlace(cells, triggers, error) || !takeMarks(cells, error) || !takeTime(cells, error)
        || !m_cores.back().takeValues(m_names, cells, error))
        return false;
    CsvCore& reading = m_cores.back();
    CapturedWindow& window = reading.core.windows.back();
    if (triggers)
        window.place.triggerSample = window.place.offset(window.samples.size());
    window.samples.append(reading.row.data());
    ++window.place.samples;
    m_words += reading.layout.rowWords() + 1;
    return m_words <= kMostWords || OXA::fail(error, "has too many samples of too many signals");
}

Capture CsvReading::finish()
{
    Capture capture;
    for (CsvCore& reading : m_cores)
        capture.push_back(std::move(reading.core));
    return capture;
}

bool readRecords(CsvRecords& records, Capture& capture, QString* error, const Progress& progress)
{
    if (!records.open())
        return false;
    CsvReading reading;
    std::vector<QByteArray> cells;
    if (!records.next(cells) || !reading.takeHeader(cells, error))
        return false;
    qint64 rows = 0;
    while (records.next(cells)) {
        if (!reading.takeRow(cells, error))
            return false;
        if (++rows % kSamplesAtOnce == 0 && progress && !progress(records.percentRead()))
            return OXA::fail(error, "stopped");
    }
    capture = reading.finish();
    return records.error().isEmpty();
}

}

bool isCsv(const QString& path)
{
    return QFileInfo(path).suffix().compare("csv", Qt::CaseInsensitive) == 0;
}

bool readCsv(const QString& path, Capture& capture, QString* error, const Progress& progress)
{
    CsvRecords records(path);
    QString problem;
    Capture read;
    const bool ok = readRecords(records, read, &problem, progress);
    if (!records.error().isEmpty())
        problem = records.error();
    if (!ok && problem.isEmpty())
        problem = "is empty";
    if (!ok && records.line() > 0)
        return OXA::fail(
            error, QString("%1:%2: %3").arg(path, QString::number(records.line()), problem));
    if (ok && read.empty())
        problem = "has no samples";
    if (!problem.isEmpty() || !completeTimes(read, &problem))
        return OXA::fail(error, path + ": " + problem);
    capture = std::move(read);
    return true;
}

}
