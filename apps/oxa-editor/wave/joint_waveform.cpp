// SPDX-License-Identifier: Apache-2.0
#include "joint_waveform.h"

#include "oxacapture/files/time_axis.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

using namespace OXA_CAPTURE;

namespace {

// More would take longer than about a second.
constexpr qint64 kMostBits = 400'000'000; // of the samples of all cores
constexpr qint64 kBitsOfSample = 150; // that take as long as the rest of a sample

QString tr(const char* text) { return QCoreApplication::translate("JointWaveform", text); }

/// From a time on, the values of a core are those of a stored sample, or unknown.
struct Step {
    quint64 time = 0;
    const SampleTable* samples = nullptr; // null: unknown
    qint64 sample = 0;
    bool isInWindow = false;
    bool isTrigger = false;
};

/// The steps of a core, in the order of their times; of two at one time, the later one counts.
std::vector<Step> stepsOf(const TimeAxis& axis, const CapturedCore& core, size_t place)
{
    std::vector<Step> steps;
    for (size_t i = 0; i < core.windows.size(); ++i) {
        const CapturedWindow& window = core.windows[i];
        const qint64 trigger = window.triggerOffset();
        const qint64 count = window.samples.size();
        for (qint64 sample = 0; sample < count; ++sample) {
            steps.push_back(
                {axis.at(place, i, sample), &window.samples, sample, true, sample == trigger});
            const quint64 after = axis.after(place, i, sample);
            if (after < axis.at(place, i, sample + 1)) // others were passed over
                steps.push_back(
                    {after, core.holds() ? &window.samples : nullptr, sample, true, false});
        }
        steps.push_back({axis.at(place, i, count)});
    }
    return steps;
}

/// The signals of a core and its triggers at `times`.
WaveRows rowsOf(
    const CapturedCore& core, const std::vector<Step>& steps, const std::vector<quint64>& times)
{
    const SampleLayout layout({int(OXA::flattenedNames(core.items).size())});
    const std::vector<quint64> unknown = unknownRow(layout);
    const quint64 triggers[][2] = {
        {0, 1},
        {0, 0},
        {1, 0}
    }; // unknown, none, one
    auto data = std::make_shared<SampleTable>(layout);
    auto events = std::make_shared<SampleTable>(SampleLayout({1}));
    auto next = steps.begin();
    Step now;
    for (const quint64 time : times) {
        while (next != steps.end() && next->time <= time)
            now = *next++;
        if (now.samples)
            data->appendField(*now.samples, 0, now.sample, 1);
        else
            data->append(unknown.data());
        events->append(triggers[int(now.isInWindow) + int(now.isTrigger)]);
    }
    const QString group = tr("core %1").arg(core.index); // in front of names, which may be equal
    QList<OXA::SignalItem> items = core.items;
    for (OXA::SignalItem& item : items)
        item.text = group + ": " + (item.text.isEmpty() ? item.name : item.text);
    OXA::SignalItem trigger;
    trigger.name = group + ": trigger";
    WaveRows rows = signalRows(items, data, 0);
    rows.push_back(signalRows({trigger}, events, 0, true).front());
    for (auto& row : rows) {
        auto own = std::make_shared<WaveRow>(*row);
        own->group = group;
        own->core = core.index;
        own->taken = events;
        for (WaveRow& bit : own->bits) {
            bit.taken = events;
            bit.core = core.index;
        }
        row = std::move(own);
    }
    return rows;
}

/// The windows of all cores in `times`, those that overlap as one.
std::vector<WaveWindow> windowsOf(
    const TimeAxis& axis, const Capture& capture, const std::vector<quint64>& times)
{
    const auto sampleOf = [&](quint64 time) {
        return qint64(std::lower_bound(times.begin(), times.end(), time) - times.begin());
    };
    std::vector<WaveWindow> all;
    for (size_t core = 0; core < capture.size(); ++core) {
        for (size_t i = 0; i < capture[core].windows.size(); ++i) {
            const CapturedWindow& window = capture[core].windows[i];
            const qint64 first = sampleOf(axis.at(core, i, 0));
            const qint64 trigger = window.triggerOffset();
            all.push_back({first, sampleOf(axis.at(core, i, window.samples.size())) - first,
                trigger == kNoSample ? kNoSample : sampleOf(axis.at(core, i, trigger)),
                window.place.forced});
        }
    }
    std::sort(all.begin(), all.end(),
        [](const WaveWindow& a, const WaveWindow& b) { return a.first < b.first; });
    // One without a trigger comes last, one that was forced before it.
    const auto rank = [](const WaveWindow& window) {
        return std::make_tuple(window.trigger == kNoSample, window.isForced, window.trigger);
    };
    std::vector<WaveWindow> joined;
    for (const WaveWindow& window : all) {
        if (joined.empty() || window.first >= joined.back().first + joined.back().samples) {
            joined.push_back(window);
            continue;
        }
        WaveWindow& before = joined.back();
        before.samples
            = qMax(before.first + before.samples, window.first + window.samples) - before.first;
        if (rank(window) < rank(before)) {
            before.trigger = window.trigger;
            before.isForced = window.isForced;
        }
    }
    return joined;
}

/// In units of the shortest period of a core; growing, however far apart the times are.
WavePlaces placesOf(const std::vector<quint64>& times, const std::vector<std::vector<Step>>& steps)
{
    quint64 shortest = 0;
    for (const std::vector<Step>& own : steps) {
        for (size_t i = 1; i < own.size(); ++i) {
            const quint64 period = own[i].time - own[i - 1].time;
            if (period > 0)
                shortest = shortest == 0 ? period : qMin(shortest, period);
        }
    }
    auto places = std::make_shared<std::vector<double>>();
    const auto add = [&](double place) {
        constexpr double kFarthest = std::numeric_limits<double>::max();
        places->push_back(
            places->empty() ? place : std::fmax(place, std::nextafter(places->back(), kFarthest)));
    };
    for (const quint64 time : times)
        add(double(time - times.front()) / double(qMax(shortest, quint64(1))));
    add(places->back() + 1);
    return places;
}

/// Why the cores have too many samples; empty when they have not.
QString tooMany(const Capture& capture)
{
    qint64 samples = 0; // at most
    qint64 bits = 0;
    for (const CapturedCore& core : capture) {
        bits += OXA::flattenedNames(core.items).size();
        for (const CapturedWindow& window : core.windows) // behind each, there may be unknown ones
            samples += window.samples.size() * (window.place.stored.empty() ? 1 : 2);
    }
    const qint64 most = kMostBits / (kBitsOfSample + bits);
    return samples <= most
        ? QString()
        : tr("The cores have too many samples to show together; with their %1 bits, about %2 are "
             "possible.")
              .arg(QString::number(bits), QString::number(most));
}

}

WaveformPtr jointWaveform(const std::shared_ptr<const Capture>& capture, QString& text)
{
    const auto captured = std::count_if(capture->begin(), capture->end(),
        [](const CapturedCore& core) { return !core.windows.empty(); });
    text = tr("Fewer than two cores have samples.");
    if (captured < 2)
        return nullptr;
    text = tooMany(*capture);
    if (!text.isEmpty())
        return nullptr;
    const TimeAxis axis(*capture);
    text = tr("All cores are shown at their times: enter the frequency of the sample clock of "
              "each core in its field Clock.");
    if (axis.kind() == TimeKind::Numbers)
        return nullptr;
    text = axis.text().section("oxa: ", 1);
    std::vector<std::vector<Step>> steps;
    auto times = std::make_shared<std::vector<quint64>>();
    for (size_t core = 0; core < capture->size(); ++core) {
        steps.push_back(stepsOf(axis, (*capture)[core], core));
        for (const Step& step : steps.back())
            times->push_back(step.time);
    }
    std::sort(times->begin(), times->end());
    times->erase(std::unique(times->begin(), times->end()), times->end());
    auto waveform = std::make_shared<Waveform>();
    for (size_t core = 0; core < capture->size(); ++core) {
        const WaveRows rows = rowsOf((*capture)[core], steps[core], *times);
        waveform->rows.insert(waveform->rows.end(), rows.begin(), rows.end());
    }
    waveform->samples = qint64(times->size());
    waveform->windows = windowsOf(axis, *capture, *times);
    waveform->captured.index = kJointCores;
    waveform->isEven = false;
    waveform->timeExponent = axis.exponent();
    waveform->places = placesOf(*times, steps);
    waveform->times = std::move(times);
    waveform->joint = capture;
    return waveform;
}
