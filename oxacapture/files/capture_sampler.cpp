// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_sampler.h"

#include "oxacapture/files/capture_file.h"
#include "oxacapture/files/capture_scopes.h"
#include "oxacapture/files/csv_reader.h"
#include "oxacapture/files/every_sample.h"
#include "oxacapture/files/time_axis.h"

#include <QHash>
#include <QRegularExpression>

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

/// The places of the requested bits, by fields; -1 for those that are missing.
std::vector<std::vector<int>> placesIn(const CapturedCore& core, const SampleRequest& request)
{
    const QHash<QString, int> known = bitsByKey(core);
    std::vector<std::vector<int>> places;
    for (const QStringList& names : request.fields) {
        places.emplace_back();
        for (const QString& name : names)
            places.back().push_back(known.value(keyOf(name), -1));
    }
    return places;
}

QStringList missingNames(const SampleRequest& request, const std::vector<std::vector<int>>& places)
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

SampleTable takeSamples(const CapturedCore& core, const std::vector<std::vector<int>>& places)
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

void takeTimes(const Capture& capture, size_t place, SampledWaveform& result)
{
    const TimeAxis axis(capture);
    result.times.emplace_back();
    if (axis.kind() != TimeKind::Numbers)
        result.timeExponent = axis.exponent();
    const CapturedCore& core = capture[place];
    for (size_t window = 0; window < core.windows.size(); ++window) {
        for (qint64 sample = 0; sample < core.windows[window].samples.size(); ++sample)
            result.times.front().push_back(axis.at(place, window, sample));
    }
}

}

bool isCaptureFile(const QString& path)
{
    if (isCsv(path))
        return true;
    VcdReader reader(path);
    return reader.readHeader() && isCapture(reader);
}

bool sampleCapture(const QString& path, const SampleRequest& request, SampledWaveform& result,
    Messages& messages, const Progress& progress)
{
    result = {};
    Capture capture;
    QString error;
    bool stopped = false;
    const Progress goesOn = [&](int percent) {
        stopped = progress && !progress(percent);
        return !stopped;
    };
    if (!readCapture(path, capture, &error, goesOn)) {
        if (!stopped)
            messages.append({{}, error});
        return false;
    }
    QStringList missing;
    for (size_t place = 0; place < capture.size(); ++place) {
        const auto places = placesIn(capture[place], request);
        const QStringList names = missingNames(request, places);
        if (place == 0 || names.size() < missing.size())
            missing = names;
        if (!names.isEmpty())
            continue;
        if (!addPassedOver(capture[place], kMostSamples)) {
            messages.append({path, "has too many samples that were not stored"});
            return false;
        }
        result.cores.push_back(takeSamples(capture[place], places));
        takeTimes(capture, place, result);
        return true;
    }
    for (const QString& name : qAsConst(missing))
        messages.append({name, "is not in the capture"});
    return false;
}

}
