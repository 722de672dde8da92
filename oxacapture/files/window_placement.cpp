// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/window_placement.h"

#include <algorithm>
#include <limits>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kGap = 16; // a window is this many times as long as the gap behind it

// Samples of a window in front of its trigger sample.
qint64 beforeTrigger(const CapturedWindow& window)
{
    return window.place.triggerSample - window.place.firstSample;
}

bool isTriggered(const CapturedWindow& window) { return window.place.triggerSample != kNoSample; }

std::vector<size_t> windowsWith(const CapturedCore& core, bool forced)
{
    std::vector<size_t> found;
    for (size_t window = 0; window < core.windows.size(); ++window) {
        if (isTriggered(core.windows[window]) && core.windows[window].place.forced == forced)
            found.push_back(window);
    }
    return found;
}

bool haveSameEdges(const CapturedCore& a, const CapturedCore& b)
{
    return !a.sampleClock.isEmpty() && a.sampleClock == b.sampleClock
        && a.fallingEdge == b.fallingEdge;
}

QString nameOf(const CapturedCore& core) { return QString("core %1").arg(core.index); }

QString countText(size_t windows, const char* kind)
{
    return QString(windows == 1 ? "1 %2 window" : "%1 %2 windows")
        .replace("%1", QString::number(windows))
        .replace("%2", kind);
}

}

WindowPlacement::WindowPlacement(const Capture& capture, bool isTimed, Length length)
    : m_capture(capture)
    , m_isTimed(isTimed)
    , m_length(std::move(length))
    , m_alignments(capture.size())
{
    separate();
    for (size_t core = 0; core < capture.size(); ++core)
        align(core);
    if (!place()) {
        // Without the alignments, each group has the windows of one core.
        separate();
        for (CoreAlignment& alignment : m_alignments) {
            if (alignment.core >= 0)
                alignment = {true, -1, 0,
                    QString("its windows and those of core %1 have no common order")
                        .arg(alignment.core)};
        }
        place();
    }
    m_isWhole = m_groups.size() > 1 && m_members[m_groups.front()].size() == m_groups.size();
}

bool WindowPlacement::isJoined(size_t core, size_t window) const
{
    return m_members[group(core, window)].size() > 1;
}

/// Makes a group of each core's windows with stamps, and of each other window.
void WindowPlacement::separate()
{
    m_firstNodes.clear();
    m_groups.clear();
    for (const CapturedCore& core : m_capture) {
        m_firstNodes.push_back(m_groups.size());
        for (size_t window = 0; window < core.windows.size(); ++window)
            m_groups.push_back(m_groups.size());
    }
    m_offsets.assign(m_groups.size(), 0);
    m_members.assign(m_groups.size(), {});
    for (Node node = 0; node < m_groups.size(); ++node)
        m_members[node] = {node};
    for (size_t core = 0; core < m_capture.size(); ++core)
        joinByStamps(core);
}

/// Puts `b` into the group of `a`, at this distance, unless it is there.
void WindowPlacement::join(Node a, Node b, qint64 distance)
{
    if (m_groups[a] == m_groups[b])
        return;
    if (m_members[m_groups[a]].size() < m_members[m_groups[b]].size()) {
        std::swap(a, b);
        distance = -distance;
    }
    const size_t group = m_groups[a];
    std::vector<Node> moved;
    moved.swap(m_members[m_groups[b]]);
    const qint64 shift = m_offsets[a] + distance - m_offsets[b];
    for (const Node node : moved) {
        m_groups[node] = group;
        m_offsets[node] += shift;
        m_members[group].push_back(node);
    }
}

void WindowPlacement::joinByStamps(size_t core)
{
    const CapturedCore& own = m_capture[core];
    qint64 passed = 0; // samples from the first trigger to this one
    for (size_t window = 1; own.knowsGaps() && window < own.windows.size(); ++window) {
        const CapturedWindow& before = own.windows[window - 1];
        const CapturedWindow& now = own.windows[window];
        if (!before.place.stamp || !now.place.stamp)
            return;
        passed += quint32(*now.place.stamp - *before.place.stamp);
        const qint64 samples = passed - beforeTrigger(now) + beforeTrigger(own.windows.front());
        join(nodeOf(core, 0), nodeOf(core, window), m_length(own, double(samples)));
    }
}

/// The core whose triggers have forced the windows of `core`; null, with the reason, when that is
/// not certain.
const CapturedCore* WindowPlacement::sourceOf(size_t core, QString& reason) const
{
    const CapturedCore& own = m_capture[core];
    QStringList names;
    const CapturedCore* source = nullptr;
    for (const CapturedCore& other : m_capture) {
        if (&other == &own || !own.forcedBy.contains(other.index)
            || windowsWith(other, false).empty())
            continue;
        names += nameOf(other);
        source = &other;
    }
    if (names.size() == 1)
        return source;
    reason = own.forcedBy.isEmpty() ? QString("which core forced it is not known") // in the file
        : names.isEmpty() ? QString("no core that forces it has a window of its own trigger")
                          : names.join(" or ") + " may have forced it";
    return nullptr;
}

void WindowPlacement::align(size_t core)
{
    const CapturedCore& own = m_capture[core];
    const std::vector<size_t> forced = windowsWith(own, true);
    CoreAlignment& alignment = m_alignments[core];
    alignment.isWanted = !forced.empty();
    if (forced.empty())
        return;
    const CapturedCore* source = sourceOf(core, alignment.reason);
    if (!source)
        return;
    const std::vector<size_t> forcing = windowsWith(*source, false);
    const bool same = haveSameEdges(own, *source);
    if (!own.knowsGaps() || !source->knowsGaps())
        alignment.reason = "samples that were not stored have no numbers";
    else if (!m_isTimed && !same)
        alignment.reason = "the frequencies of the sample clocks are not known";
    else if (forcing.size() != forced.size())
        alignment.reason = QString("it has %1, %2 has %3")
                               .arg(countText(forced.size(), "forced"), nameOf(*source),
                                   countText(forcing.size(), "other"));
    if (!alignment.reason.isEmpty())
        return;
    alignment.core = source->index;
    alignment.tolerance = same ? 0 : 0.5 / own.clockHz;
    const size_t sourcePlace = size_t(source - m_capture.data());
    for (size_t i = 0; i < forced.size(); ++i) {
        const auto from = double(beforeTrigger(source->windows[forcing[i]]) + source->pulseDelay);
        const auto to = double(beforeTrigger(own.windows[forced[i]]));
        // The forced sample is the first one after the change, within one period.
        const qint64 distance = same ? m_length(own, from + 1 - to)
                                     : m_length(*source, from) + m_length(own, 0.5 - to);
        join(nodeOf(sourcePlace, forcing[i]), nodeOf(core, forced[i]), distance);
    }
}

std::vector<std::vector<WindowPlacement::Part>> WindowPlacement::partsOfGroups() const
{
    std::vector<std::vector<Part>> parts(m_members.size());
    for (size_t core = 0; core < m_capture.size(); ++core) {
        for (size_t window = 0; window < m_capture[core].windows.size(); ++window) {
            std::vector<Part>& own = parts[m_groups[nodeOf(core, window)]];
            if (own.empty() || own.back().core != core
                || own.back().first + own.back().count != window)
                own.push_back({core, window, 0});
            ++own.back().count;
        }
    }
    return parts;
}

/// Places the groups one after the other. False when windows of two groups would alternate.
bool WindowPlacement::place()
{
    m_starts.clear();
    for (const CapturedCore& core : m_capture)
        m_starts.emplace_back(core.windows.size());
    const std::vector<std::vector<Part>> parts = partsOfGroups();
    std::vector<size_t> next(m_capture.size()); // windows that are not placed
    std::vector<qint64> free(m_capture.size()); // where they may begin
    const auto isNext = [&](const Part& part) { return part.first == next[part.core]; };
    size_t placed = 0;
    size_t before = 0;
    do {
        before = placed;
        for (size_t core = 0; core < m_capture.size(); ++core) {
            while (next[core] < m_capture[core].windows.size()) {
                const auto& own = parts[m_groups[nodeOf(core, next[core])]];
                if (!std::all_of(own.begin(), own.end(), isNext))
                    break;
                placeGroup(own, free);
                for (const Part& part : own) {
                    next[part.core] += part.count;
                    placed += part.count;
                }
            }
        }
    } while (placed > before);
    return placed == m_groups.size();
}

/// Places a group where no window begins before `free` of its core; moves `free` behind it.
void WindowPlacement::placeGroup(const std::vector<Part>& parts, std::vector<qint64>& free)
{
    qint64 start = std::numeric_limits<qint64>::min();
    for (const Part& part : parts)
        start = std::max(start, free[part.core] - m_offsets[nodeOf(part.core, part.first)]);
    for (const Part& part : parts) {
        const CapturedCore& core = m_capture[part.core];
        qint64 end = free[part.core];
        for (size_t window = part.first; window < part.first + part.count; ++window) {
            const CapturedWindow& own = core.windows[window];
            const qint64 samples = own.place.offset(own.samples.size());
            qint64& at = m_starts[part.core][window];
            at = std::max(end, start + m_offsets[nodeOf(part.core, window)]);
            end = at + m_length(core, double(samples));
            free[part.core]
                = at + m_length(core, double(samples + std::max(samples / kGap, qint64(1))));
        }
    }
}

}
