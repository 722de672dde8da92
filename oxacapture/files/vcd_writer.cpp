// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/time_axis.h"
#include "oxacapture/waveform/dump_text.h"
#include "oxacapture/waveform/time_unit.h"

#include <QHash>
#include <QIODevice>
#include <QSet>

namespace OXA_CAPTURE {

namespace {

constexpr int kFlushAt = 1 << 20; // bytes

// A variable of a core's data signals.
struct DataVariable {
    QByteArray id;
    QString name; // with its range
    int firstBit; // of a sample
    int width;
    QHash<QByteArray, QByteArray> states; // texts of values
    QByteArray stateId; // of the variable with these texts
    QString stateName;
    QByteArray last; // the value written last
};

struct CoreVariables {
    std::vector<DataVariable> data;
    QByteArray sample;
    QString sampleName;
    QByteArray trigger;
    QString triggerName;
    QByteArray window;
    QString windowName;
    QByteArray forced; // null when no other core forces it
    QString forcedName;
    QByteArray stamp; // null without stamps
    QString stampName;
};

// A variable with the texts of the values with names.
void addStates(
    DataVariable& variable, const QHash<QString, QString>& states, UniqueNames& names, int& count)
{
    if (states.isEmpty())
        return;
    for (auto state = states.begin(); state != states.end(); ++state)
        variable.states.insert(state.key().toLatin1(), dumpWord(*state).toUtf8());
    variable.stateId = dumpIdentifier(count++);
    variable.stateName = names.take(variable.name.section(' ', 0, 0) + "_name");
}

CoreVariables variablesOf(const CapturedCore& core, const OXA::StateNames& states, int& count)
{
    CoreVariables variables;
    UniqueNames names;
    QSet<QStringList> shown;
    int bit = 0;
    for (const OXA::SignalItem& item : core.items) {
        const QStringList bits = OXA::flattenedNames({item});
        if (!shown.contains(bits)) { // signals captured twice are shown once
            DataVariable variable;
            variable.id = dumpIdentifier(count++);
            variable.name = takeDumpName(item, names);
            variable.firstBit = bit;
            variable.width = item.bitCount();
            addStates(variable, OXA::statesOf(states, bits), names, count);
            variables.data.push_back(variable);
        }
        shown += bits;
        bit += item.bitCount();
    }
    variables.sample = dumpIdentifier(count++);
    variables.sampleName = names.takeOwn(freeName(core, "sample"));
    variables.trigger = dumpIdentifier(count++);
    variables.triggerName = names.takeOwn(freeName(core, "trigger"));
    variables.window = dumpIdentifier(count++);
    variables.windowName = names.takeOwn(freeName(core, "window"));
    if (core.showsForced()) {
        variables.forced = dumpIdentifier(count++);
        variables.forcedName = names.takeOwn(freeName(core, "forced"));
    }
    if (core.hasStamps()) {
        variables.stamp = dumpIdentifier(count++);
        variables.stampName = names.takeOwn(freeName(core, "stamp"));
    }
    return variables;
}

QByteArray declarations(const CapturedCore& core, const CoreVariables& variables)
{
    QString text = QString("$scope module core%1 $end\n").arg(core.index);
    for (const DataVariable& variable : variables.data) {
        text += dumpDeclaration("wire", variable.width, variable.id, variable.name);
        if (!variable.states.isEmpty())
            text += dumpDeclaration("string", 1, variable.stateId, variable.stateName);
    }
    text += dumpDeclaration("wire", 1, variables.sample, variables.sampleName);
    text += dumpDeclaration("wire", 1, variables.trigger, variables.triggerName);
    text += dumpDeclaration("integer", kDumpNumberBits, variables.window, variables.windowName);
    if (!variables.forced.isNull())
        text += dumpDeclaration("wire", 1, variables.forced, variables.forcedName);
    if (!variables.stamp.isNull())
        text += dumpDeclaration("integer", kDumpNumberBits, variables.stamp, variables.stampName);
    return (text + "$upscope $end\n").toUtf8();
}

void addNumber(quint32 number, const QByteArray& id, QByteArray& text)
{
    addDumpChange(QByteArray::number(number, 2).rightJustified(2, '0'), id, text);
}

void addText(const QByteArray& word, const QByteArray& id, QByteArray& text)
{
    text.append('s').append(word).append(' ').append(id).append('\n');
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

// Reads the samples of all windows of a core, and the ends of the windows.
class CoreTrace {
public:
    CoreTrace(const Capture& capture, size_t core, const TimeAxis& axis, CoreVariables variables)
        : m_core(capture[core])
        , m_place(core)
        , m_axis(axis)
        , m_variables(std::move(variables))
    {
    }

    bool isAtEnd() const { return m_window == m_core.windows.size(); }
    quint64 time() const ///< of the next changes
    {
        return m_passesOver ? m_axis.after(m_place, m_window, m_sample - 1)
                            : m_axis.at(m_place, m_window, m_sample);
    }

    /// Adds the next changes: a sample, the first of passed over ones, or the end of a window.
    void next(QByteArray& text)
    {
        if (m_passesOver) {
            m_passesOver = false;
            return passOver(text);
        }
        if (m_sample == window().samples.size())
            return endWindow(text);
        if (m_sample == 0) {
            addNumber(quint32(m_window), m_variables.window, text);
            if (!m_variables.stamp.isNull() && window().place.stamp)
                addNumber(*window().place.stamp, m_variables.stamp, text);
        }
        for (DataVariable& variable : m_variables.data)
            addData(variable, text);
        addDumpChange(m_read % 2 ? "1" : "0", m_variables.sample, text);
        const bool triggers = m_sample == window().triggerOffset();
        if (triggers || m_isTrigger || m_sample == 0) {
            addDumpChange(triggers ? "1" : "0", m_variables.trigger, text);
            addForced(triggers && window().place.forced ? "1" : "0", text);
        }
        m_isTrigger = triggers;
        ++m_sample;
        ++m_read;
        m_passesOver = window().place.offset(m_sample) > window().place.offset(m_sample - 1) + 1;
    }

    /// Signals are unknown between windows, and before the first one unless that begins at `time`.
    void begin(quint64 first, QByteArray& text)
    {
        if (isAtEnd() || time() > first)
            addUnknown(text);
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
        if (!changed)
            return;
        addDumpChange(variable.last, variable.id, text);
        if (!variable.states.isEmpty())
            addText(variable.states.value(variable.last, variable.last), variable.stateId, text);
    }

    // The next window may begin at this time.
    void endWindow(QByteArray& text)
    {
        const quint64 end = time();
        ++m_window;
        m_sample = 0;
        if (isAtEnd() || time() > end)
            addUnknown(text);
    }

    // The samples behind a stored one, up to the next.
    void passOver(QByteArray& text)
    {
        if (!m_core.holds())
            addUnknownData(text);
        if (m_isTrigger) {
            addDumpChange("0", m_variables.trigger, text);
            addForced("0", text);
        }
        m_isTrigger = false;
    }

    void addForced(const char* level, QByteArray& text) const
    {
        if (!m_variables.forced.isNull())
            addDumpChange(level, m_variables.forced, text);
    }

    void addUnknownData(QByteArray& text)
    {
        for (DataVariable& variable : m_variables.data) {
            addDumpChange(variable.width == 1 ? "x" : "xx", variable.id, text);
            if (!variable.states.isEmpty())
                addText("x", variable.stateId, text);
            variable.last.clear();
        }
    }

    void addUnknown(QByteArray& text)
    {
        addUnknownData(text);
        addDumpChange("x", m_variables.sample, text);
        addDumpChange("x", m_variables.trigger, text);
        addDumpChange("xx", m_variables.window, text);
        addForced("x", text);
        if (!m_variables.stamp.isNull())
            addDumpChange("xx", m_variables.stamp, text);
    }

    const CapturedCore& m_core;
    size_t m_place; // of the capture
    const TimeAxis& m_axis;
    CoreVariables m_variables;
    size_t m_window = 0;
    qint64 m_sample = 0;
    qint64 m_read = 0; // samples, of all windows
    bool m_isTrigger = false; // the signal is 1
    bool m_passesOver = false; // the next changes are those of samples that were not stored
};

// The trace with the earliest next changes; null after the last ones.
CoreTrace* earliest(std::vector<CoreTrace>& traces)
{
    CoreTrace* first = nullptr;
    for (CoreTrace& trace : traces) {
        if (!trace.isAtEnd() && (!first || trace.time() < first->time()))
            first = &trace;
    }
    return first;
}

}

std::vector<DumpName> dumpNames(const CapturedCore& core)
{
    int count = 0;
    const CoreVariables variables = variablesOf(core, {}, count);
    const QStringList bits = OXA::flattenedNames(core.items);
    std::vector<DumpName> names;
    for (const DataVariable& variable : variables.data)
        names.push_back({variable.name, bits.mid(variable.firstBit, variable.width)});
    names.push_back({variables.triggerName, {variables.triggerName}});
    return names;
}

bool writeVcd(QIODevice& out, const Capture& capture, const Progress& goesOn,
    const CaptureFileOptions& options, QString*)
{
    const TimeAxis axis(capture);
    QByteArray text = "$version\n    " + axis.text().toUtf8() + "\n$end\n$timescale "
        + timescaleText(axis.exponent()) + " $end\n";
    std::vector<CoreTrace> traces;
    qint64 samples = 0;
    int variableCount = 0;
    for (size_t core = 0; core < capture.size(); ++core) {
        const CoreVariables variables = variablesOf(capture[core], options.states, variableCount);
        text += declarations(capture[core], variables);
        traces.emplace_back(capture, core, axis, variables);
        samples += capturedSamples(capture[core]);
    }
    text += untriggeredNote(capture) + "$enddefinitions $end\n";
    CoreTrace* trace = earliest(traces);
    quint64 time = trace ? trace->time() : 0;
    text += '#' + QByteArray::number(time) + '\n';
    for (CoreTrace& other : traces)
        other.begin(time, text);
    qint64 done = 0;
    for (; trace; trace = earliest(traces)) {
        if (trace->time() != time)
            text += '#' + QByteArray::number(trace->time()) + '\n';
        time = trace->time();
        trace->next(text);
        if (++done % kSamplesAtOnce != 0 && text.size() < kFlushAt)
            continue;
        if (!goesOn(int(std::min(done, samples) * 100 / samples)) || out.write(text) != text.size())
            return false;
        text.clear();
    }
    return goesOn(100) && out.write(text) == text.size();
}

}
