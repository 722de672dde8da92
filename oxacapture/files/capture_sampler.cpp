// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_sampler.h"

#include "oxacapture/files/capture_file.h"
#include "oxacapture/files/csv_reader.h"
#include "oxacapture/files/every_sample.h"
#include "oxacapture/files/time_axis.h"
#include "oxacapture/waveform/capture_scopes.h"
#include "oxacapture/waveform/signal_finder.h"
#include "oxacapture/waveform/waveform_input.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kMostSamples = 1 << 27; // with those that were not stored

/// What files keep of a name: some formats replace backslashes, spaces and dots.
QString keyOf(QString name)
{
    static const QRegularExpression replaced("[\\s\\p{C}\\\\_]+");
    return name.replace('.', '/').remove(replaced);
}

/// The bits of a core's samples by the names of the signals.
QHash<QString, int> bitsByKey(const CapturedCore& core)
{
    QHash<QString, int> places;
    int bit = 0;
    for (const QString& name : OXA::flattenedNames(core.items))
        places.insert(keyOf(name), bit++);
    return places;
}

using Places = std::vector<std::vector<int>>;

/// The places of the requested bits, by fields; -1 for those that are missing.
Places placesIn(const CapturedCore& core, const SampleRequest& request)
{
    const QHash<QString, int> known = bitsByKey(core);
    Places places;
    for (const QStringList& names : request.fields) {
        places.emplace_back();
        for (const QString& name : names)
            places.back().push_back(known.value(keyOf(name), -1));
    }
    return places;
}

QStringList missingNames(const SampleRequest& request, const Places& places)
{
    QStringList missing;
    for (size_t field = 0; field < places.size(); ++field) {
        for (size_t i = 0; i < places[field].size(); ++i) {
            const QString& name = request.fields[field].at(int(i));
            if (places[field][i] < 0 && !missing.contains(name))
                missing += name;
        }
    }
    return missing;
}

/// The first core of the capture that has all requested signals. When there is none, -1, and the
/// signals that the core with the most of them lacks.
int findCore(const Capture& capture, const SampleRequest& request, QStringList& missing)
{
    for (size_t core = 0; core < capture.size(); ++core) {
        const QStringList names = missingNames(request, placesIn(capture[core], request));
        if (names.isEmpty())
            return int(core);
        if (core == 0 || names.size() < missing.size())
            missing = names;
    }
    return -1;
}

SampleTable takeSamples(const CapturedCore& core, const Places& places)
{
    std::vector<int> widths;
    widths.reserve(places.size());
    for (const auto& field : places)
        widths.push_back(int(field.size()));
    const SampleLayout layout(widths);
    SampleTable table(layout);
    std::vector<quint64> row(size_t(layout.rowWords()));
    for (const CapturedWindow& window : core.windows) {
        for (qint64 sample = 0; sample < window.samples.size(); ++sample) {
            for (size_t field = 0; field < places.size(); ++field) {
                for (size_t i = 0; i < places[field].size(); ++i)
                    setBit(layout, row, int(field), int(i),
                        window.samples.bit(sample, 0, places[field][i]));
            }
            table.append(row.data());
        }
    }
    return table;
}

std::vector<quint64> timesOf(const CapturedCore& core, size_t place, const TimeAxis& axis)
{
    std::vector<quint64> times;
    for (size_t window = 0; window < core.windows.size(); ++window) {
        for (qint64 sample = 0; sample < core.windows[window].samples.size(); ++sample)
            times.push_back(axis.at(place, window, sample));
    }
    return times;
}

/// Adds both edges of a clock for each sample, those of all clocks in the order of their times.
void addEdges(const std::vector<const SampleRequest*>& clocks,
    const std::vector<const std::vector<quint64>*>& times, std::vector<ClockEdge>& edges)
{
    std::vector<size_t> next(clocks.size());
    for (;;) {
        quint64 time = std::numeric_limits<quint64>::max();
        bool isEnd = true;
        for (size_t clock = 0; clock < clocks.size(); ++clock) {
            if (next[clock] == times[clock]->size())
                continue;
            time = std::min(time, (*times[clock])[next[clock]]);
            isEnd = false;
        }
        if (isEnd)
            return;
        for (const bool isFirst : {true, false}) {
            bool sameTime = false;
            for (size_t clock = 0; clock < clocks.size(); ++clock) {
                if (next[clock] == times[clock]->size() || (*times[clock])[next[clock]] != time)
                    continue;
                edges.push_back({quint16(clock), isFirst != clocks[clock]->fallingEdge, sameTime});
                sameTime = true;
                next[clock] += isFirst ? 0 : 1;
            }
        }
    }
}

/// Adds the clocks and their edges. False when two requests with one clock do not have the same
/// samples.
bool addClocks(
    const std::vector<SampleRequest>& requests, SampledWaveform& result, Messages& messages)
{
    std::vector<const SampleRequest*> clocks;
    std::vector<const std::vector<quint64>*> times;
    for (size_t core = 0; core < requests.size(); ++core) {
        const int known = result.clocks.indexOf(requests[core].clock);
        if (known >= 0 && *times[size_t(known)] != result.times[core]) {
            messages.append({requests[core].clock,
                "is the clock of several cores, whose samples in the capture have different times;"
                " use a waveform instead"});
            return false;
        }
        if (known >= 0)
            continue;
        result.clocks += requests[core].clock;
        clocks.push_back(&requests[core]);
        times.push_back(&result.times[core]);
    }
    addEdges(clocks, times, result.edges);
    return true;
}

bool takeCapture(Capture& capture, const std::vector<SampleRequest>& requests,
    SampledWaveform& result, Messages& messages)
{
    std::vector<int> cores;
    QStringList all;
    for (const SampleRequest& request : requests) {
        QStringList missing;
        cores.push_back(findCore(capture, request, missing));
        if (cores.back() < 0)
            all += missing;
    }
    all.removeDuplicates();
    for (const QString& name : qAsConst(all))
        messages.append({name, "is not in the capture"});
    if (!all.isEmpty())
        return false;
    const bool isOneCore = std::all_of(
        cores.begin(), cores.end(), [&cores](int core) { return core == cores.front(); });
    if (!isOneCore && TimeAxis(capture).kind() != TimeKind::Waveform) {
        messages.append(Message {{},
            "the capture does not tell how the samples of several cores lie to each other in "
            "time"});
        return false;
    }
    for (CapturedCore& core : capture) {
        if (!addPassedOver(core, kMostSamples)) {
            messages.append(
                Message {{}, "the capture has too many samples, with those not stored"});
            return false;
        }
    }
    const TimeAxis axis(capture);
    if (axis.kind() != TimeKind::Numbers)
        result.timeExponent = axis.exponent();
    bool hasSamples = true;
    for (size_t i = 0; i < requests.size(); ++i) {
        const CapturedCore& core = capture[size_t(cores[i])];
        result.cores.push_back(takeSamples(core, placesIn(core, requests[i])));
        result.times.push_back(timesOf(core, size_t(cores[i]), axis));
        hasSamples = hasSamples && !result.times.back().empty();
    }
    if (!hasSamples)
        messages.append(Message {{}, "the capture has no samples"});
    return hasSamples && addClocks(requests, result, messages);
}

bool sampleCapture(const QString& path, const std::vector<SampleRequest>& requests,
    SampledWaveform& result, Messages& messages, const Progress& progress)
{
    result = {};
    Capture capture;
    QString error;
    bool stopped = false;
    const Progress goesOn = [&](int percent) {
        stopped = progress && !progress(percent);
        return !stopped;
    };
    if (readCapture(path, capture, &error, goesOn))
        return takeCapture(capture, requests, result, messages);
    if (!stopped)
        messages.append({{}, error});
    return false;
}

}

bool isSampledCapture(const QString& path, const QStringList& clocks)
{
    if (isCsv(path))
        return true;
    VcdReader reader(path);
    if (path == kStandardStream || !reader.readHeader() || !isCapture(reader))
        return false;
    const SignalFinder finder(reader);
    return !isSession(reader)
        || std::any_of(clocks.begin(), clocks.end(),
            [&](const QString& clock) { return finder.find(clock, nullptr).code < 0; });
}

bool sampleStimulus(const QString& path, const std::vector<SampleRequest>& requests,
    SampledWaveform& result, Messages& messages, const Progress& progress)
{
    QStringList clocks;
    for (const SampleRequest& request : requests)
        clocks += request.clock;
    return isSampledCapture(path, clocks)
        ? sampleCapture(path, requests, result, messages, progress)
        : sampleWaveform(path, requests, result, messages, progress);
}

}
