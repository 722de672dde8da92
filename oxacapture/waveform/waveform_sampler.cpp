// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/waveform_sampler.h"

#include "oxacapture/waveform/code_slots.h"
#include "oxacapture/waveform/signal_finder.h"

#include <QSet>

namespace OXA_CAPTURE {

namespace {

// The use of a waveform's bit: in a core's row, or as a clock.
struct BitUse {
    int bit; // of the variable
    int core;
    int field;
    int place; // of the field
};

struct ClockUse {
    int bit;
    int clock;
};

struct Slot {
    std::string value; // as it was before the time being read
    std::string next;
    bool changed = false;
    std::vector<BitUse> uses;
    std::vector<ClockUse> clocks;
};

struct CoreSampler {
    int clock;
    bool activeLevel;
    std::vector<quint64> row; // the values before the time being read
};

class Sampler : public VcdSink {
public:
    Sampler(const VcdReader& waveform, SampledWaveform& result)
        : m_waveform(waveform)
        , m_finder(waveform)
        , m_result(result)
    {
    }

    void plan(const std::vector<SampleRequest>& requests, Messages& messages);
    const std::vector<int>& watched() const { return m_slots.codes(); }

    void change(int slot, std::string_view bits) override;
    void endOfTime(quint64 time) override;

private:
    void planCore(int core, const SampleRequest& request);
    int planClock(const QString& name);
    WaveformBit find(const QString& name);
    void seeClock(int clock, char level, quint64 time, bool& firstEdge);
    void takeSamples(const ClockEdge& edge, quint64 time);
    void settle(Slot& slot);

    const VcdReader& m_waveform;
    SignalFinder m_finder;
    SampledWaveform& m_result;
    Messages* m_messages = nullptr;
    QSet<QString> m_reported;
    CodeSlots<Slot> m_slots;
    std::vector<int> m_changed;
    std::vector<CoreSampler> m_cores;
    std::vector<char> m_levels; // of the clocks; 'x' until one is known
};

void Sampler::plan(const std::vector<SampleRequest>& requests, Messages& messages)
{
    m_messages = &messages;
    for (size_t core = 0; core < requests.size(); ++core)
        planCore(int(core), requests[core]);
    m_levels.assign(size_t(m_result.clocks.size()), 'x');
}

void Sampler::planCore(int core, const SampleRequest& request)
{
    std::vector<int> widths;
    for (const QStringList& names : request.fields)
        widths.push_back(names.size());
    m_result.cores.emplace_back(SampleLayout(widths));
    m_result.times.emplace_back();
    const SampleLayout& layout = m_result.cores.back().layout();
    m_cores.push_back({planClock(request.clock), !request.fallingEdge, unknownRow(layout)});

    for (int field = 0; field < layout.fieldCount(); ++field) {
        const QStringList& names = request.fields[size_t(field)];
        for (int place = 0; place < names.size(); ++place) {
            const WaveformBit found = find(names.at(place));
            if (found.code >= 0)
                m_slots.of(found.code).uses.push_back({found.bit, core, field, place});
        }
    }
}

int Sampler::planClock(const QString& name)
{
    const int known = m_result.clocks.indexOf(name);
    if (known >= 0)
        return known;
    const int clock = m_result.clocks.size();
    m_result.clocks += name;
    const WaveformBit found = find(name);
    if (found.code >= 0)
        m_slots.of(found.code).clocks.push_back({found.bit, clock});
    return clock;
}

// A signal that several cores or fields use is reported once.
WaveformBit Sampler::find(const QString& name)
{
    const WaveformBit found = m_finder.find(name, m_reported.contains(name) ? nullptr : m_messages);
    if (found.code < 0)
        m_reported += name;
    return found;
}

void Sampler::change(int slot, std::string_view bits)
{
    Slot& changed = m_slots[slot];
    changed.next = bits;
    if (!changed.changed)
        m_changed.push_back(slot);
    changed.changed = true;
}

void Sampler::endOfTime(quint64 time)
{
    bool firstEdge = true;
    for (const int slot : m_changed) {
        for (const ClockUse& use : m_slots[slot].clocks)
            seeClock(use.clock, m_slots[slot].next[size_t(use.bit)], time, firstEdge);
    }
    for (const int slot : m_changed)
        settle(m_slots[slot]);
    m_changed.clear();
}

void Sampler::seeClock(int clock, char level, quint64 time, bool& firstEdge)
{
    char& known = m_levels[size_t(clock)];
    if (level == known || (level != '0' && level != '1'))
        return;
    if (known != 'x') {
        m_result.edges.push_back({quint16(clock), level == '1', !firstEdge});
        firstEdge = false;
        takeSamples(m_result.edges.back(), time);
    }
    known = level;
}

void Sampler::takeSamples(const ClockEdge& edge, quint64 time)
{
    for (size_t core = 0; core < m_cores.size(); ++core) {
        if (m_cores[core].clock != edge.clock || m_cores[core].activeLevel != edge.level)
            continue;
        m_result.cores[core].append(m_cores[core].row.data());
        m_result.times[core].push_back(time);
    }
}

void Sampler::settle(Slot& slot)
{
    for (const BitUse& use : slot.uses) {
        const char now = slot.next[size_t(use.bit)];
        if (!slot.value.empty() && slot.value[size_t(use.bit)] == now)
            continue;
        CoreSampler& core = m_cores[size_t(use.core)];
        setBit(m_result.cores[size_t(use.core)].layout(), core.row, use.field, use.place,
            logicOf(now));
    }
    slot.value.swap(slot.next);
    slot.changed = false;
}

void reportEmptyCores(
    const SampledWaveform& waveform, const std::vector<SampleRequest>& requests, Messages& messages)
{
    QSet<QString> reported;
    for (size_t core = 0; core < requests.size(); ++core) {
        const SampleRequest& request = requests[core];
        const QString edge = request.fallingEdge ? "falling" : "rising";
        const QString text = "the sample clock has no " + edge + " edge in the waveform";
        if (waveform.cores[core].size() > 0 || reported.contains(request.clock + edge))
            continue;
        reported += request.clock + edge;
        messages.append({request.clock, text});
    }
}

}

bool sampleWaveform(const QString& path, const std::vector<SampleRequest>& requests,
    SampledWaveform& result, Messages& messages, const Progress& progress)
{
    result = {};
    VcdReader reader(path);
    if (!reader.readHeader()) {
        messages.append(reader.message());
        return false;
    }
    result.timeExponent = reader.timeExponent();
    Sampler sampler(reader, result);
    const int before = messages.size();
    sampler.plan(requests, messages);
    if (messages.size() > before)
        return false;
    if (!reader.readChanges(sampler.watched(), sampler, progress)) {
        if (!reader.message().text.isEmpty())
            messages.append(reader.message());
        return false;
    }
    reportEmptyCores(result, requests, messages);
    return messages.size() == before;
}

}
