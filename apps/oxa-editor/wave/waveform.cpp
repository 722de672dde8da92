// SPDX-License-Identifier: Apache-2.0
#include "waveform.h"

#include "wave_events.h"
#include "wave_times.h"

#include "oxacapture/files/every_sample.h"

#include <QCoreApplication>

#include <algorithm>

using namespace OXA_CAPTURE;

namespace {

// `count` bits of `words` from the bit `at` on.
std::vector<quint64> cut(const quint64* words, int at, int count)
{
    std::vector<quint64> result(size_t(count + 63) / 64);
    const int shift = at % 64;
    for (int word = 0; word < int(result.size()); ++word) {
        const quint64* from = words + at / 64 + word;
        result[size_t(word)] = from[0] >> shift;
        const bool more = shift > 0 && count - word * 64 > 64 - shift;
        if (more)
            result[size_t(word)] |= from[1] << (64 - shift);
    }
    if (count % 64 != 0)
        result.back() &= ~quint64(0) >> (64 - count % 64);
    return result;
}

// The changes of each bit of a field, the most significant first.
std::vector<ChangeIndex> bitChanges(const SampleTable& samples, int field)
{
    const SampleLayout& layout = samples.layout();
    const int width = layout.width(field);
    const int values = layout.valueAt(field);
    const int unknowns = layout.unknownAt(field);
    std::vector<ChangeIndex> changes(size_t(width), ChangeIndex(samples.size()));
    for (qint64 sample = 1; sample < samples.size(); ++sample) {
        const quint64* before = samples.row(sample - 1);
        const quint64* now = samples.row(sample);
        for (int word = 0; word < layout.words(field); ++word) {
            quint64 changed = (before[values + word] ^ now[values + word])
                | (before[unknowns + word] ^ now[unknowns + word]);
            for (; changed; changed &= changed - 1) {
                const int fromLeast = word * 64 + int(qCountTrailingZeroBits(changed));
                changes[size_t(width - 1 - fromLeast)].insert(sample);
            }
        }
    }
    return changes;
}

constexpr qint64 kMostShown = 4'000'000; // samples with those that were passed over

/// The times of the samples, when those of all windows are known.
void takeTimes(Waveform& waveform, const CapturedCore& captured)
{
    auto times = std::make_shared<std::vector<quint64>>();
    for (const CapturedWindow& window : captured.windows) {
        if (qint64(window.times.size()) != window.samples.size() + 1)
            return;
        times->insert(times->end(), window.times.begin(), std::prev(window.times.end()));
    }
    waveform.timeExponent = captured.timeExponent;
    waveform.clockHz = clockOf(*times, captured.timeExponent);
    if (!times->empty())
        waveform.times = std::move(times);
}

QString shownName(const OXA::SignalItem& item)
{
    return item.text.isEmpty() ? item.name : item.text;
}

}

QString WaveRow::nameIn(const QString& shownGroup) const
{
    const QString core = group + ": ";
    const bool isShown = !group.isEmpty() && group == shownGroup && name.startsWith(core);
    return isShown ? name.mid(core.size()) : name;
}

WaveValue WaveRow::valueAt(qint64 sample) const
{
    const SampleLayout& layout = samples->layout();
    const quint64* row = samples->row(sample);
    const int fromLeast = layout.width(field) - firstBit - width;
    return {width, cut(row + layout.valueAt(field), fromLeast, width),
        cut(row + layout.unknownAt(field), fromLeast, width)};
}

int Waveform::windowAt(qint64 sample) const
{
    const auto behind = std::upper_bound(windows.begin(), windows.end(), sample,
        [](qint64 at, const WaveWindow& window) { return at < window.first; });
    if (behind == windows.begin())
        return -1;
    const WaveWindow& window = *std::prev(behind);
    return sample < window.first + window.samples ? int(behind - windows.begin()) - 1 : -1;
}

WaveRows signalRows(const QList<OXA::SignalItem>& items,
    const std::shared_ptr<const SampleTable>& samples, int field, bool isEvent)
{
    const std::vector<ChangeIndex> changes = bitChanges(*samples, field);
    int at = 0;
    const auto bitRow = [&](const OXA::SignalItem& item) {
        WaveRow row {shownName(item), isEvent, samples, field, at, 1, changes[size_t(at)], {}};
        ++at;
        return row;
    };
    WaveRows rows;
    for (const OXA::SignalItem& item : items) {
        if (!item.isBus()) {
            rows.push_back(std::make_shared<WaveRow>(bitRow(item)));
            continue;
        }
        WaveRow bus {shownName(item), isEvent, samples, field, at, item.bitCount(),
            ChangeIndex(samples->size()), {}};
        for (const OXA::SignalItem& bit : item.subItems) {
            bus.bits.push_back(bitRow(bit));
            bus.changes.unite(bus.bits.back().changes);
        }
        rows.push_back(std::make_shared<WaveRow>(std::move(bus)));
    }
    return rows;
}

WaveformPtr capturedWaveform(const CapturedCore& captured, const OXA::AoCore* core)
{
    auto waveform = std::make_shared<Waveform>();
    auto samples = std::make_shared<SampleTable>(
        SampleLayout({int(OXA::flattenedNames(captured.items).size())}));
    CapturedCore shown = captured;
    const bool isWhole = addPassedOver(shown, kMostShown);
    for (const CapturedWindow& window : shown.windows) {
        const qint64 first = samples->size();
        samples->appendField(window.samples, 0, 0, window.samples.size());
        const qint64 trigger = window.triggerOffset();
        waveform->windows.push_back({first, window.samples.size(),
            trigger == kNoSample ? kNoSample : first + trigger, window.place.forced});
    }
    waveform->samples = samples->size();
    waveform->isCut = true;
    waveform->isEven = shown.storage.isDefault();
    takeTimes(*waveform, shown);
    waveform->rows = signalRows(captured.items, samples, 0);
    waveform->captured = captured;
    WaveRows events;
    if (core)
        events = capturedEventRows(*core, captured, *samples, waveform->windows);
    waveform->rows.insert(waveform->rows.end(), events.begin(), events.end());
    if (isWhole)
        addStoredRow(*waveform);
    return waveform;
}

void addStoredRow(Waveform& waveform)
{
    if (waveform.captured.storage.isDefault())
        return;
    auto flags = std::make_shared<SampleTable>(SampleLayout({1}));
    const quint64 passed[] = {0, 0};
    const quint64 stored[] = {1, 0};
    const quint64 unknown[] = {0, 1};
    const auto fillTo = [&](qint64 end, const quint64* row) {
        while (flags->size() < end)
            flags->append(row);
    };
    for (size_t i = 0; i < waveform.windows.size(); ++i) {
        const CapturedWindow& window = waveform.captured.windows[i];
        const qint64 first = waveform.windows[i].first;
        fillTo(first, unknown);
        for (qint64 sample = 0; sample < window.samples.size(); ++sample) {
            flags->append(stored);
            fillTo(first + window.place.offset(sample + 1), passed);
        }
    }
    fillTo(waveform.samples, unknown);
    OXA::SignalItem item;
    item.name = "stored";
    for (const auto& row : signalRows({item}, flags, 0, true))
        waveform.rows.push_back(row);
}

QString WaveWindow::triggerText() const
{
    return isForced ? QCoreApplication::translate("WaveWindow", "forced")
                    : QCoreApplication::translate("WaveWindow", "T", "trigger");
}

WaveformPtr withForced(const WaveformPtr& waveform, const std::vector<qint64>& forced)
{
    if (forced.empty())
        return waveform;
    auto changed = std::make_shared<Waveform>(*waveform);
    for (const qint64 window : forced) {
        if (window < qint64(changed->windows.size()))
            changed->windows[size_t(window)].isForced = true;
    }
    return changed;
}
