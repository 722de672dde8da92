// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/unique_names.h"

#include <QIODevice>
#include <QRegularExpression>
#include <QSet>

namespace OXA_CAPTURE {

namespace {

constexpr int kFlushAt = 1 << 20; // bytes
constexpr int kWindowBits = 32;

// A dump's unit of time for clocks of at least a frequency: their periods have at least a thousand
// units.
struct TimeUnit {
    const char* name;
    double leastHz;
    double unitsPerSecond;
};

constexpr TimeUnit kTimeUnits[] = {
    {"1 fs", 1e9, 1e15},
    {"1 ps", 1e6, 1e12},
    {"1 ns", 1e3, 1e9 },
    {"1 us", 1,   1e6 },
    {"1 ms", 0,   1e3 },
};

// The times of samples: one unit for each when no clock is known.
class TimeScale {
public:
    explicit TimeScale(const Capture& capture)
    {
        for (const CapturedCore& core : capture)
            m_hz = std::max(m_hz, core.clockHz);
        for (const TimeUnit& unit : kTimeUnits) {
            if (m_hz > 0 && !m_unit && m_hz >= unit.leastHz)
                m_unit = &unit;
        }
    }

    QByteArray head() const
    {
        return m_unit ? QByteArray("$timescale ") + m_unit->name + " $end\n"
                      : QByteArray("$comment\n    Captured samples, one time unit each.\n$end\n"
                                   "$timescale 1 ns $end\n");
    }

    qint64 at(qint64 sample) const
    {
        return m_unit ? qRound64(double(sample) * m_unit->unitsPerSecond / m_hz) : sample;
    }

private:
    double m_hz = 0;
    const TimeUnit* m_unit = nullptr;
};

// An identifier of a dump: a number in base 94.
QByteArray identifier(int number)
{
    QByteArray id;
    do {
        id += char('!' + number % 94);
        number /= 94;
    } while (number > 0);
    return id;
}

// A variable of a core's data signals.
struct DataVariable {
    QByteArray id;
    QString name; // with its range
    int firstBit; // of a sample
    int width;
    QByteArray last; // the value written last
};

struct CoreVariables {
    std::vector<DataVariable> data;
    QByteArray trigger;
    QString triggerName;
    QByteArray window;
    QString windowName;
};

// Removes "[7]" from the end of "count[7]"; false when there is no such index.
bool takeIndex(QString& name, int& index)
{
    static const QRegularExpression indexed("^(.+)\\[(-?\\d+)\\]$");
    const auto match = indexed.match(name);
    bool ok = false;
    index = match.captured(2).toInt(&ok);
    if (!ok || QString::number(index) != match.captured(2))
        return false;
    name = match.captured(1);
    return true;
}

// Spaces separate words in a dump, and a word with a leading dollar sign ends a declaration.
QString oneWord(const QString& name)
{
    static const QRegularExpression unusable("[\\s\\p{C}]+");
    const QString word = QString(name).remove('\\').replace(unusable, "_");
    return word.startsWith('$') ? '_' + word : word;
}

// "count" with its range for "count[7]" to "count[0]"; otherwise the bus's name with a range down
// to 0.
QString takeBusName(const OXA::SignalItem& bus, UniqueNames& names)
{
    static const QRegularExpression blanks("\\s+");
    QStringList bits;
    for (const OXA::SignalItem& bit : bus.subItems)
        bits += oneWord(QString(bit.name).remove(blanks));
    QString base = bits.first();
    QString last = bits.last();
    int msb = 0;
    int lsb = 0;
    bool counts = takeIndex(base, msb) && takeIndex(last, lsb);
    const int step = msb <= lsb ? 1 : -1;
    for (int bit = 0; counts && bit < bits.size(); ++bit)
        counts = bits.at(bit) == base + QString("[%1]").arg(qint64(msb) + qint64(bit) * step);
    if (!counts)
        return names.take(oneWord(bus.name), QString(" [%1:0]").arg(bits.size() - 1));
    return names.take(base, QString(" [%1:%2]").arg(QString::number(msb), QString::number(lsb)));
}

// Replaces the brackets of a single signal, which would look like a range.
QString takeSignalName(const QString& signal, UniqueNames& names)
{
    QString name = oneWord(signal);
    int index = 0;
    if (takeIndex(name, index))
        return names.take(name, QString("[%1]").arg(index));
    if (name.endsWith(']'))
        name.replace('[', '(').replace(']', ')');
    return names.take(name);
}

CoreVariables variablesOf(const CapturedCore& core, int& count)
{
    CoreVariables variables;
    UniqueNames names;
    QSet<QStringList> shown;
    int bit = 0;
    for (const OXA::SignalItem& item : core.items) {
        const QStringList bits = OXA::flattenedNames({item});
        if (!shown.contains(bits)) // signals captured twice are shown once
            variables.data.push_back({identifier(count++),
                item.isBus() ? takeBusName(item, names) : takeSignalName(item.name, names), bit,
                item.bitCount(), {}});
        shown += bits;
        bit += item.bitCount();
    }
    variables.trigger = identifier(count++);
    variables.triggerName = names.takeOwn(freeName(core, "trigger"));
    variables.window = identifier(count++);
    variables.windowName = names.takeOwn(freeName(core, "window"));
    return variables;
}

QByteArray declarations(const CapturedCore& core, const CoreVariables& variables)
{
    const QString line("$var %1 %2 %3 %4 $end\n");
    QString text = QString("$scope module core%1 $end\n").arg(core.index);
    for (const DataVariable& variable : variables.data)
        text += line.arg("wire", QString::number(variable.width), variable.id, variable.name);
    text += line.arg("wire", "1", variables.trigger, variables.triggerName);
    text += line.arg(
        "integer", QString::number(kWindowBits), variables.window, variables.windowName);
    return (text + "$upscope $end\n").toUtf8();
}

void addChange(const QByteArray& bits, const QByteArray& id, QByteArray& text)
{
    if (bits.size() == 1)
        text.append(bits).append(id).append('\n');
    else
        text.append('b').append(bits).append(' ').append(id).append('\n');
}

// A comment before a dump's samples, because a signal `trigger` that stays 0 is easily overlooked.
QByteArray untriggeredNote(const Capture& capture)
{
    QString text;
    for (const CapturedCore& core : capture) {
        if (!core.windows.empty() && core.windows.back().untriggered)
            text += QString("$comment\n    core %1, window %2: no trigger\n$end\n")
                        .arg(QString::number(core.index), QString::number(core.windows.size() - 1));
    }
    return text.toUtf8();
}

// Reads the samples of all windows of a core, one time unit each.
class CoreTrace {
public:
    CoreTrace(const CapturedCore& core, CoreVariables variables)
        : m_core(core)
        , m_variables(std::move(variables))
    {
    }

    /// Adds the changes at the next time unit.
    void next(QByteArray& text)
    {
        while (m_window < m_core.windows.size() && m_sample == window().samples.size()) {
            ++m_window;
            m_sample = 0;
        }
        if (m_window == m_core.windows.size())
            return end(text);
        if (m_sample == 0)
            addChange(QByteArray::number(int(m_window), 2).rightJustified(2, '0'),
                m_variables.window, text);
        for (DataVariable& variable : m_variables.data)
            addData(variable, text);
        const qint64 trigger = window().triggerOffset();
        if (m_sample == trigger)
            addChange("1", m_variables.trigger, text);
        else if (m_sample == 0 || m_sample == trigger + 1)
            addChange("0", m_variables.trigger, text);
        ++m_sample;
    }

private:
    const CapturedWindow& window() const { return m_core.windows[m_window]; }

    void addData(DataVariable& variable, QByteArray& text) const
    {
        bool changed = variable.last.isEmpty();
        variable.last.resize(variable.width);
        char* last = variable.last.data();
        for (int bit = 0; bit < variable.width; ++bit, ++last) {
            const char now = "01x"[int(window().samples.bit(m_sample, 0, variable.firstBit + bit))];
            changed |= *last != now;
            *last = now;
        }
        if (changed)
            addChange(variable.last, variable.id, text);
    }

    // After its last sample, a core's signals are unknown.
    void end(QByteArray& text)
    {
        if (m_ended)
            return;
        m_ended = true;
        for (const DataVariable& variable : m_variables.data)
            addChange(variable.width == 1 ? "x" : "xx", variable.id, text);
        addChange("x", m_variables.trigger, text);
        addChange("xx", m_variables.window, text);
    }

    const CapturedCore& m_core;
    CoreVariables m_variables;
    size_t m_window = 0;
    qint64 m_sample = 0;
    bool m_ended = false;
};

}

bool writeVcd(QIODevice& out, const Capture& capture, const Progress& goesOn, QString*)
{
    const TimeScale scale(capture);
    QByteArray text = scale.head();
    std::vector<CoreTrace> traces;
    qint64 times = 0;
    int variableCount = 0;
    for (const CapturedCore& core : capture) {
        const CoreVariables variables = variablesOf(core, variableCount);
        text += declarations(core, variables);
        traces.emplace_back(core, variables);
        times = std::max(times, capturedSamples(core));
    }
    text += untriggeredNote(capture) + "$enddefinitions $end\n";
    for (qint64 time = 0; time <= times; ++time) {
        QByteArray changes;
        for (CoreTrace& trace : traces) {
            if (time < times || time == 0)
                trace.next(changes);
        }
        if (!changes.isEmpty() || time == times)
            text += '#' + QByteArray::number(scale.at(time)) + '\n' + changes;
        if (text.size() < kFlushAt && time < times && time % kSamplesAtOnce != 0)
            continue;
        if (!goesOn(int(time * 100 / std::max(times, qint64(1)))) || out.write(text) != text.size())
            return false;
        text.clear();
    }
    return true;
}

}
