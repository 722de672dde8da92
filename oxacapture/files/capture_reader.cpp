// SPDX-License-Identifier: Apache-2.0
#include "files/fail.h"
#include "oxacapture/files/capture_file.h"
#include "oxacapture/files/capture_limits.h"
#include "oxacapture/files/csv_reader.h"
#include "oxacapture/files/dump_times.h"
#include "oxacapture/files/time_axis.h"
#include "oxacapture/waveform/bus_range.h"
#include "oxacapture/waveform/capture_scopes.h"
#include "oxacapture/waveform/code_slots.h"
#include "oxacapture/waveform/vcd_reader.h"

#include <algorithm>
#include <cmath>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kMostNumber = qint64(1) << 53; // of a sample

/// Where a variable's bits go.
struct BitsOfCore {
    size_t core;
    int first; // bit of the sample
};

/// A variable that says where the samples of a capture's core are.
struct Mark {
    size_t core;
    OwnVariable kind;
};

struct Slot {
    std::vector<BitsOfCore> uses;
    std::vector<Mark> marks;
};

/// A core while its samples are read.
struct CoreReading {
    CapturedCore core;
    SampleLayout layout;
    std::vector<quint64> row;
    std::string window; // number of the window being read; empty outside of windows
    std::string nextWindow;
    bool isTrigger = false;
    bool isForced = false;
    std::optional<quint32> stamp;
    bool isSample = false; // there is one at this time
    bool isEnd = false; // the window ends at this time
    bool isData = false; // the data signals change at this time
    bool changesBetween = false; // they have changed within a window without a sample
};

/// Reads samples: in a capture those of its cores; in another waveform one whenever a signal
/// changes.
class CaptureReading : public VcdSink {
public:
    explicit CaptureReading(const VcdReader& waveform)
        : m_waveform(waveform)
    {
    }

    /// Finds out what the variables are.
    bool plan(QString* error);
    const std::vector<int>& watched() const { return m_slots.codes(); }

    void change(int slot, std::string_view bits) override;
    void endOfTime(quint64 time) override;

    bool isTooLarge() const { return m_words > kMostWords; }
    /// The capture, after the last change.
    Capture finish();

private:
    void planCore(int index, size_t from, size_t to, const std::vector<QString>& names);
    void takeMark(const Mark& mark, std::string_view bits);
    void takeSample(CoreReading& reading, quint64 time);
    void endWindow(CoreReading& reading, quint64 time);

    const VcdReader& m_waveform;
    bool m_isCapture = false;
    CodeSlots<Slot> m_slots;
    std::vector<CoreReading> m_cores;
    bool m_isChanged = false;
    quint64 m_time = 0;
    qint64 m_words = 0;
};

OXA::SignalItem itemOf(const VcdVariable& variable, const QString& name)
{
    const OXA::BitRange range {name, variable.msb, variable.lsb};
    if (variable.width > 1)
        return busItem(range, variable.width);
    OXA::SignalItem item;
    item.name = variable.hasRange ? range.bitName(0) : name;
    return item;
}

bool CaptureReading::plan(QString* error)
{
    const auto& variables = m_waveform.variables();
    m_isCapture = isCapture(m_waveform);
    std::vector<QString> names;
    qint64 characters = 0;
    qint64 bits = 0;
    for (const VcdVariable& variable : variables) {
        const std::string full = m_isCapture ? variable.name : m_waveform.fullName(variable);
        names.push_back(QString::fromStdString(full));
        characters += names.back().size() * qint64(std::max(variable.width, 1)); // of all bits
        bits += variable.width;
        if (characters > kMostCharacters || bits > kMostBits)
            return OXA::fail(error, "has too many signals, or their names are too long");
    }
    for (size_t from = 0; from < variables.size();) {
        const size_t to = m_isCapture ? endOfScope(variables, from) : variables.size();
        const int index = m_isCapture ? coreOf(m_waveform, variables[from]) : 0;
        planCore(index, from, to, names);
        from = to;
    }
    return true;
}

void CaptureReading::planCore(int index, size_t from, size_t to, const std::vector<QString>& names)
{
    const auto& variables = m_waveform.variables();
    const size_t place = m_cores.size();
    m_cores.emplace_back();
    CoreReading& reading = m_cores.back();
    reading.core.index = index;
    const std::vector<OwnVariable> own
        = m_isCapture ? ownVariables(m_waveform, from, to) : std::vector<OwnVariable>();
    const size_t end = to - own.size();
    int width = 0;
    for (size_t i = from; i < end; ++i) {
        if (variables[i].width == 0)
            continue;
        reading.core.items += itemOf(variables[i], names[i]);
        m_slots.of(variables[i].code).uses.push_back({place, width});
        width += variables[i].width;
    }
    for (size_t i = end; i < to; ++i)
        m_slots.of(variables[i].code).marks.push_back({place, own[i - end]});
    reading.layout = SampleLayout({width});
    reading.row = unknownRow(reading.layout);
}

void CaptureReading::change(int slot, std::string_view bits)
{
    const Slot& changed = m_slots[slot];
    for (const BitsOfCore& use : changed.uses) {
        CoreReading& reading = m_cores[use.core];
        reading.isData = true;
        int bit = use.first;
        for (const char c : bits)
            setBit(reading.layout, reading.row, 0, bit++, logicOf(c));
    }
    for (const Mark& mark : changed.marks)
        takeMark(mark, bits);
    m_isChanged = true;
}

void CaptureReading::takeMark(const Mark& mark, std::string_view bits)
{
    CoreReading& reading = m_cores[mark.core];
    const char last = bits.back();
    bool ok = false;
    switch (mark.kind) {
    case OwnVariable::Sample:
        reading.isSample = last == '0' || last == '1';
        reading.isEnd = !reading.isSample;
        break;
    case OwnVariable::Trigger:
        reading.isTrigger = last == '1';
        break;
    case OwnVariable::Window:
        reading.nextWindow = bits;
        break;
    case OwnVariable::Forced:
        reading.isForced = last == '1';
        break;
    case OwnVariable::Stamp:
        reading.stamp = QByteArray(bits.data(), int(bits.size())).toUInt(&ok, 2);
        if (!ok)
            reading.stamp.reset();
        break;
    }
}

void CaptureReading::endWindow(CoreReading& reading, quint64 time)
{
    if (!reading.window.empty())
        reading.core.windows.back().times.push_back(time);
    reading.window.clear();
}

void CaptureReading::takeSample(CoreReading& reading, quint64 time)
{
    if (isTooLarge())
        return;
    if (reading.window != reading.nextWindow || reading.window.empty()) {
        endWindow(reading, time);
        reading.window = m_isCapture ? reading.nextWindow : "0";
        reading.nextWindow = reading.window;
        reading.core.windows.emplace_back();
        m_words += qint64(sizeof(CapturedWindow) / sizeof(quint64));
        reading.core.windows.back().samples = SampleTable(reading.layout);
    }
    CapturedWindow& window = reading.core.windows.back();
    if (reading.isTrigger)
        window.place.triggerSample = window.samples.size();
    window.place.forced = window.place.forced || (reading.isTrigger && reading.isForced);
    window.place.stamp = reading.stamp;
    window.samples.append(reading.row.data());
    window.times.push_back(time);
    ++window.place.samples;
    m_words += reading.layout.rowWords() + 1;
}

void CaptureReading::endOfTime(quint64 time)
{
    for (CoreReading& reading : m_cores) {
        if (m_isCapture ? reading.isSample : m_isChanged)
            takeSample(reading, time);
        else if (reading.isEnd)
            endWindow(reading, time);
        else
            reading.changesBetween |= reading.isData && !reading.window.empty();
        reading.isSample = reading.isEnd = reading.isData = false;
    }
    m_isChanged = false;
    m_time = time;
}

Capture CaptureReading::finish()
{
    QMap<int, double> clocks;
    const QString text = QString::fromStdString(m_waveform.version());
    const TimeKind kind = readTimeText(text, clocks);
    const std::optional<int> exponent = m_waveform.timeExponent();
    const double units = std::pow(10, -exponent.value_or(0)); // in a second
    const bool timed = exponent && (!m_isCapture || kind == TimeKind::Waveform);
    // A time of each sample is kept only when they are those of the waveform.
    qint64 room = timed ? kMostWords - m_words : kMostNumber;
    Capture capture;
    for (CoreReading& reading : m_cores) {
        endWindow(reading, m_time);
        CapturedCore& core = reading.core;
        const double clockHz = m_isCapture ? clocks.value(core.index) : 0;
        if (timed)
            core.timeExponent = *exponent;
        else
            core.clockHz = clockHz;
        const auto keep
            = reading.changesBetween ? OXA::CoreStorage::When : OXA::CoreStorage::Changes;
        if (m_isCapture && kind == TimeKind::Numbers)
            takeNumbers(core, keep, 1, room);
        else if (clockHz > 0 && exponent)
            takeNumbers(core, keep, units / clockHz, room);
        capture.push_back(std::move(core));
    }
    if (m_isCapture && exponent && kind == TimeKind::Window)
        alignAsInText(capture, text, units);
    for (CapturedCore& core : capture) {
        for (CapturedWindow& window : core.windows) {
            if (!timed)
                window.times.clear();
            else if (!window.place.stored.empty())
                completeTimes(window);
        }
    }
    return capture;
}

}

bool readCapture(const QString& path, Capture& capture, QString* error, const Progress& progress)
{
    if (isCsv(path))
        return readCsv(path, capture, error, progress);
    VcdReader reader(path);
    if (!reader.readHeader())
        return OXA::fail(error, reader.message().message());
    CaptureReading reading(reader);
    QString problem;
    if (!reading.plan(&problem))
        return OXA::fail(error, path + ": " + problem);
    const Progress goesOn
        = [&](int percent) { return !reading.isTooLarge() && (!progress || progress(percent)); };
    const bool read = reader.readChanges(reading.watched(), reading, goesOn);
    if (reading.isTooLarge())
        return OXA::fail(error, path + ": has too many samples of too many signals");
    if (!read)
        return OXA::fail(
            error, reader.message().text.isEmpty() ? "stopped" : reader.message().message());
    capture = reading.finish();
    return true;
}

}
