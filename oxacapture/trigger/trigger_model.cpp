// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/trigger/trigger_model.h"

#include <algorithm>

#include <QStringList>

namespace OXA_CAPTURE {

namespace {

// A port's value and its registers, the least significant word first.
using Words = const quint64*;

// Bits with the requested level or edge.
//
//   m1 m2   satisfied         m0
//    0  0   always            unused
//    1  0   by its level      the level
//    0  1   on one edge       0 rising, 1 falling
//    1  1   by any edge       0 when there is one, 1 when none
quint64 satisfiedBits(quint64 value, quint64 before, quint64 m0, quint64 m1, quint64 m2)
{
    const quint64 level = ~(value ^ m0);
    const quint64 edge = value ^ before;
    const quint64 oneEdge = edge & (value ^ m0);
    const quint64 anyEdge = edge ^ m0;
    return (~m1 & ~m2) | (m1 & ~m2 & level) | (~m1 & m2 & oneEdge) | (m1 & m2 & anyEdge);
}

bool allSatisfied(const UnitSetup& unit, Words value, Words before)
{
    for (size_t word = 0; word < unit.m0.size(); ++word) {
        if (~satisfiedBits(value[word], before[word], unit.m0[word], unit.m1[word], unit.m2[word]))
            return false;
    }
    return true;
}

// Negative, 0 or positive as `value` is less than, equal to or greater than `bound`.
int compare(Words value, const std::vector<quint64>& bound)
{
    for (size_t word = bound.size(); word-- > 0;) {
        if (value[word] != bound[word])
            return value[word] < bound[word] ? -1 : 1;
    }
    return 0;
}

bool holds(const UnitSetup& unit, Words value, Words before)
{
    switch (unit.func) {
    case OXA::MatchEqual:
        return allSatisfied(unit, value, before);
    case OXA::MatchNotEqual:
        return !allSatisfied(unit, value, before);
    case OXA::MatchGreater:
        return compare(value, unit.m0) > 0;
    case OXA::MatchLess:
        return compare(value, unit.m1) < 0;
    case OXA::MatchGreaterEqual:
        return compare(value, unit.m0) >= 0;
    case OXA::MatchLessEqual:
        return compare(value, unit.m1) <= 0;
    case OXA::MatchInRange:
        return compare(value, unit.m0) >= 0 && compare(value, unit.m1) <= 0;
    case OXA::MatchNotInRange:
        return compare(value, unit.m0) < 0 || compare(value, unit.m1) > 0;
    }
    return false;
}

bool comparesUnknown(const UnitSetup& unit, Words unknown)
{
    const bool byBit = unit.func == OXA::MatchEqual || unit.func == OXA::MatchNotEqual;
    for (size_t word = 0; word < unit.m0.size(); ++word) {
        if (unknown[word] & (byBit ? unit.m1[word] | unit.m2[word] : ~quint64(0)))
            return true;
    }
    return false;
}

}

qint64 Window::offset(qint64 index) const
{
    if (stored.empty())
        return index;
    const qint64 behind = index - qint64(stored.size());
    return behind < 0 ? stored[size_t(index)] : stored.back() + 1 + behind;
}

qint64 Window::triggerIndex() const
{
    const qint64 trigger = triggerSample - firstSample;
    if (triggerSample == kNoSample || stored.empty())
        return triggerSample == kNoSample ? kNoSample : trigger;
    return std::lower_bound(stored.begin(), stored.end(), trigger) - stored.begin();
}

TriggerModel::TriggerModel(TriggerSetup setup, const SampleLayout& layout)
    : m_setup(std::move(setup))
    , m_layout(layout)
    , m_storage(m_setup.storage)
{
    m_counts.resize(m_setup.units.size());
    m_progress.matches.resize(m_setup.units.size());
    m_progress.firstUnknown.resize(m_setup.units.size(), kNoSample);
}

SampleEvents TriggerModel::take(const quint64* row, bool force, bool pulse)
{
    SampleEvents events;
    if (m_previous.empty()) // no edges yet: the sample before counts as equal
        m_previous.assign(row, row + m_layout.rowWords());
    quint32 outputs = 0;
    if (m_state == Armed || (m_state == Open && m_storage.needsOutputs())) {
        const quint32 matches = compareUnits(row);
        outputs = countMatches(matches);
        if (m_state == Armed) {
            events.armed = true;
            events.matches = matches;
            events.outputs = outputs;
            events.own = advance(outputs, events) || force;
            events.trigger = events.own || pulse;
        }
    }
    if (events.trigger)
        openWindow(pulse);
    events.captured = m_state == Open;
    const bool atLimit = events.captured && m_setup.storage.limit > 0
        && m_sample == m_windows.back().triggerSample + m_setup.storage.limit;
    m_isStored = m_state != Finished
        && m_storage.take(row + m_layout.valueAt(0), m_previous.data() + m_layout.valueAt(0),
            m_layout.words(0), outputs, events.trigger || atLimit);
    if (m_isStored)
        store(m_sample);
    if (m_isStored && events.captured)
        closeFullWindow(atLimit);
    m_previous.assign(row, row + m_layout.rowWords());
    ++m_sample;
    return events;
}

void TriggerModel::stop()
{
    if (m_state == Finished || m_isStored || m_sample == 0)
        return;
    store(m_sample - 1);
    if (m_state == Open)
        closeFullWindow(false);
}

quint32 TriggerModel::compareUnits(const quint64* row)
{
    quint32 matches = 0;
    for (size_t i = 0; i < m_setup.units.size(); ++i) {
        const UnitSetup& unit = m_setup.units[i];
        const int at = m_layout.valueAt(unit.field);
        qint64& firstUnknown = m_progress.firstUnknown[i];
        if (firstUnknown == kNoSample
            && comparesUnknown(unit, row + m_layout.unknownAt(unit.field)))
            firstUnknown = m_sample;
        if (!holds(unit, row + at, m_previous.data() + at))
            continue;
        matches |= quint32(1) << unit.index;
        if (m_state == Armed)
            ++m_progress.matches[i];
    }
    return matches;
}

quint32 TriggerModel::countMatches(quint32 matches)
{
    quint32 outputs = matches;
    for (size_t i = 0; i < m_setup.units.size(); ++i) {
        const UnitSetup& unit = m_setup.units[i];
        const quint32 bit = quint32(1) << unit.index;
        if (unit.counter == 0)
            continue;
        if (matches & bit)
            ++m_counts[i];
        else if (unit.continuous)
            m_counts[i] = 0;
        if (m_counts[i] == unit.counter)
            m_counts[i] = 0;
        else
            outputs &= ~bit;
    }
    return outputs;
}

// Whether the outputs satisfy the last expression of the sequence.
bool TriggerModel::advance(quint32 outputs, SampleEvents& events)
{
    int& reached = m_progress.reached;
    if (!m_setup.levels.empty() && m_setup.levels[size_t(reached)].at(outputs)) {
        events.satisfied = true;
        ++reached;
    }
    events.reached = reached;
    return events.satisfied && size_t(reached) == m_setup.levels.size();
}

void TriggerModel::openWindow(bool forced)
{
    Window window;
    window.triggerSample = m_sample;
    window.forced = forced;
    if (m_setup.stamps)
        window.stamp = quint32(m_sample);
    if (m_storage.all()) {
        window.firstSample = std::max(m_armedAt, m_sample - m_setup.triggerPos);
        window.samples = m_sample - window.firstSample;
    } else {
        window.firstSample = m_stored.empty() ? m_sample : m_stored.front();
        window.samples = qint64(m_stored.size());
        for (const qint64 sample : m_stored)
            window.stored.push_back(sample - window.firstSample);
    }
    m_windows.push_back(window);
    m_state = Open;
}

void TriggerModel::store(qint64 sample)
{
    if (m_state == Open) {
        Window& window = m_windows.back();
        ++window.samples;
        if (!m_storage.all())
            window.stored.push_back(sample - window.firstSample);
    } else if (!m_storage.all()) {
        m_stored.push_back(sample);
        if (qint64(m_stored.size()) > m_setup.triggerPos)
            m_stored.pop_front();
    }
}

void TriggerModel::closeFullWindow(bool atLimit)
{
    const Window& window = m_windows.back();
    const qint64 after = window.samples - 1 - window.triggerIndex();
    if (!atLimit && after < m_setup.captureAmount - m_setup.triggerPos - 1)
        return;
    if (qint64(m_windows.size()) == m_setup.windowNum) {
        m_state = Finished;
        return;
    }
    m_state = Armed;
    m_armedAt = m_sample + 1;
    m_stored.clear();
    m_storage.endWindow();
    m_progress.reached = 0;
    std::fill(m_counts.begin(), m_counts.end(), 0);
}

ModelRun runModel(
    const TriggerSetup& setup, const SampleTable& samples, qint64 forceAt, bool withEvents)
{
    TriggerModel model(setup, samples.layout());
    ModelRun run;
    for (qint64 sample = 0; sample < samples.size(); ++sample) {
        if (model.finished() && !withEvents)
            break;
        const SampleEvents events = model.take(samples.row(sample), sample == forceAt);
        if (withEvents)
            run.events.push_back(events);
    }
    model.stop();
    run.windows = model.windows();
    run.progress = model.progress();
    return run;
}

ModelRun runModel(const OXA::AOCore_Lite& core, const SampleTable& samples)
{
    ModelRun run;
    Window window;
    window.samples = std::min(samples.size(), qint64(core.captureAmount));
    if (window.samples > 0)
        run.windows.push_back(window);
    return run;
}

bool dependsOnUnknown(const TriggerSetup& setup, const SampleTable& samples, qint64 forceAt,
    const std::vector<qint64>& pulses)
{
    const SampleLayout& layout = samples.layout();
    TriggerModel zeros(setup, layout);
    TriggerModel ones(setup, layout);
    std::vector<quint64> row(size_t(layout.rowWords()));
    for (qint64 sample = 0; sample < samples.size(); ++sample) {
        row.assign(samples.row(sample), samples.row(sample) + layout.rowWords());
        const bool force
            = sample == forceAt || std::binary_search(pulses.begin(), pulses.end(), sample);
        const SampleEvents zero = zeros.take(row.data(), force);
        for (size_t word = 0; word < row.size() / 2; ++word)
            row[word] |= row[word + row.size() / 2];
        if (zero.trigger != ones.take(row.data(), force).trigger)
            return true;
    }
    return false;
}

QString matchesText(int unit, qint64 matches)
{
    const QString times = matches == 1 ? "1 time"
        : matches < kCountedMatches    ? QString("%1 times").arg(matches)
                                       : QString("%1 times or more").arg(kCountedMatches);
    return QString("M%1 matched %2").arg(QString::number(unit), times);
}

QString progressText(const TriggerSetup& setup, const TriggerProgress& progress)
{
    if (setup.levels.empty())
        return "it has no trigger expression, so it triggers only when forced";
    QStringList texts {
        QString("level %1 of %2 reached")
            .arg(QString::number(progress.reached), QString::number(setup.levels.size()))};
    for (size_t i = 0; i < setup.units.size(); ++i)
        texts += matchesText(setup.units[i].index, progress.matches[i]);
    return texts.join(", ");
}

}
