// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_result.h"

#include "files/fail.h"
#include "files/replace_file.h"
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/time_axis.h"
#include "oxacapture/waveform/waveform_input.h"

#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace OXA_CAPTURE {

namespace {

struct Format {
    const char* ending;
    bool (*write)(QIODevice& out, const Capture& capture, const Progress& goesOn,
        const CaptureFileOptions& options, QString* error);
};

constexpr int kDone = 100; // percent

// In the order of CaptureFormat.
constexpr Format kFormats[] = {
    {"vcd", writeVcd   },
    {"fst", writeFst   },
    {"csv", writeCsv   },
    {"sr",  writeSigrok},
};

const Format* formatOf(const QString& path)
{
    if (path == kStandardStream)
        return kFormats;
    const QString ending = QFileInfo(path).suffix().toLower();
    for (const Format& format : kFormats) {
        if (ending == format.ending)
            return &format;
    }
    return nullptr;
}

void addWaiting(const CapturedCore& core, QJsonObject& object)
{
    QJsonArray units;
    for (const UnitMatches& unit : core.matches)
        units += QJsonObject {
            {"index",   unit.unit   },
            {"matches", unit.matches}
        };
    object.insert("level", core.level);
    object.insert("window", core.window);
    object.insert("units", units);
}

/// `groups` has the numbers of groups of windows so far.
QJsonObject windowObject(const Capture& capture, const TimeAxis& axis, size_t place, size_t number,
    QHash<quint64, int>& groups)
{
    const CapturedCore& core = capture[place];
    const Window& window = core.windows[number].place;
    QJsonObject object {
        {"triggerSample", window.triggerSample == kNoSample ? QJsonValue() : window.triggerSample},
        {"firstSample",   window.firstSample                                                     },
        {"samples",       window.samples                                                         },
    };
    if (!core.storage.isDefault())
        object.insert("span", core.knowsGaps() ? QJsonValue(window.span()) : QJsonValue());
    if (core.showsForced())
        object.insert("forced", window.forced);
    if (core.hasStamps())
        object.insert("stamp", window.stamp ? QJsonValue(qint64(*window.stamp)) : QJsonValue());
    const std::optional<size_t> group = axis.group(place, number);
    if (!group || axis.kind() != TimeKind::Window)
        return object;
    if (!groups.contains(*group))
        groups.insert(*group, groups.size());
    object.insert("group", groups.value(*group));
    object.insert("start", double(axis.at(place, number, 0)) * std::pow(10, axis.exponent()));
    return object;
}

QJsonObject alignmentObject(const CoreAlignment& alignment)
{
    const bool isAligned = alignment.core >= 0;
    return {
        {"core",      isAligned ? QJsonValue(alignment.core) : QJsonValue()     },
        {"tolerance", isAligned ? QJsonValue(alignment.tolerance) : QJsonValue()},
        {"reason",    alignment.reason                                          },
    };
}

}

bool CapturedCore::showsForced() const
{
    return !forcedBy.isEmpty()
        || std::any_of(windows.begin(), windows.end(),
            [](const CapturedWindow& window) { return window.place.forced; });
}

bool CapturedCore::hasStamps() const
{
    return std::any_of(windows.begin(), windows.end(),
        [](const CapturedWindow& window) { return window.place.stamp.has_value(); });
}

std::vector<CapturedWindow> cutWindows(
    const std::vector<Window>& places, const SampleTable& sampled)
{
    std::vector<CapturedWindow> windows;
    for (const Window& place : places) {
        SampleTable samples(SampleLayout({sampled.layout().width(0)}));
        if (place.stored.empty())
            samples.appendField(sampled, 0, place.firstSample, place.samples);
        for (const qint64 sample : place.stored)
            samples.appendField(sampled, 0, place.firstSample + sample, 1);
        windows.push_back({place, std::move(samples)});
    }
    return windows;
}

CaptureFormat captureFormat(const QString& path)
{
    return CaptureFormat(formatOf(path) - kFormats);
}

QString captureFileOf(const QString& path)
{
    const Format* format = formatOf(path);
    const bool isOutput = path == kStandardStream
        || (format && path == QLatin1String(kStandardStream) + '.' + format->ending);
    return isOutput ? QString("/dev/stdout") : path;
}

void addTimes(CapturedCore& core, const std::vector<quint64>& times, std::optional<int> exponent)
{
    if (!exponent)
        return;
    core.timeExponent = *exponent;
    for (CapturedWindow& window : core.windows) {
        if (window.samples.size() == 0)
            continue;
        const auto first = times.begin() + window.place.firstSample;
        const auto end = first + window.place.span();
        window.times.assign(first, end);
        window.times.push_back(end != times.end() ? *end : endOfLast(window.times));
    }
}

bool mayWriteCapture(const QString& path, QString* error)
{
    if (!formatOf(path))
        return OXA::fail(
            error, QString("%1: the suffix has to be .vcd, .fst, .csv or .sr").arg(path));
    const QString cannot = path + ": cannot be written: ";
    const QFileInfo file(captureFileOf(path));
    const QFileInfo directory(file.absolutePath());
    if (file.isDir())
        return OXA::fail(error, cannot + "it is a directory");
    if (file.exists() && !file.isWritable())
        return OXA::fail(error, cannot + "no permission to change it");
    if (!directory.isDir())
        return OXA::fail(error, cannot + "there is no directory " + directory.filePath());
    if (!file.exists() && !directory.isWritable())
        return OXA::fail(error, cannot + "no permission to write to " + directory.filePath());
    return true;
}

bool writeCapture(
    const QString& path, const Capture& capture, QString* error, const Progress& progress)
{
    return writeCapture(path, capture, CaptureFileOptions(), error, progress);
}

bool writeCapture(const QString& path, const Capture& capture, const CaptureFileOptions& options,
    QString* error, const Progress& progress)
{
    if (!mayWriteCapture(path, error))
        return false;
    const auto fill = [&](QIODevice& out, QString* reason) {
        bool stopped = false;
        const Progress goesOn = [&](int percent) {
            stopped = stopped || (progress && !progress(percent));
            return !stopped;
        };
        const bool written
            = formatOf(path)->write(out, capture, goesOn, options, reason) && goesOn(kDone);
        return stopped ? OXA::fail(reason, "stopped") : written;
    };
    return OXA_FILES::replaceFile(captureFileOf(path), fill, error);
}

bool isCaptureStream(const QString& path) { return OXA_FILES::isStream(captureFileOf(path)); }

QJsonObject captureObject(const Capture& capture)
{
    const TimeAxis axis(capture);
    QHash<quint64, int> groups;
    QJsonArray cores;
    for (size_t place = 0; place < capture.size(); ++place) {
        const CapturedCore& core = capture[place];
        QJsonArray windows;
        for (size_t window = 0; window < core.windows.size(); ++window)
            windows += windowObject(capture, axis, place, window, groups);
        QJsonObject object {
            {"index",     core.index      },
            {"triggered", core.triggered()},
            {"windows",   windows         }
        };
        if (core.waited)
            addWaiting(core, object);
        if (axis.alignment(place).isWanted)
            object.insert("alignment", alignmentObject(axis.alignment(place)));
        if (!core.names.isEmpty())
            object.insert("names", core.names);
        cores += object;
    }
    return {
        {"cores", cores}
    };
}

QByteArray captureJson(const Capture& capture)
{
    return QJsonDocument(captureObject(capture)).toJson(QJsonDocument::Indented);
}

quint64 endOfLast(const std::vector<quint64>& times)
{
    const quint64 last = times.back();
    const quint64 period = times.size() > 1 ? last - times[times.size() - 2] : 1;
    return last + std::min(period, ~last);
}

void addTime(quint64 time, qint64 passed, std::vector<quint64>& times)
{
    const quint64 before = passed > 0 ? times.back() : 0;
    for (qint64 i = 1; i <= passed; ++i)
        times.push_back(
            before + quint64(std::llround(double(time - before) * double(i) / double(passed + 1))));
    times.push_back(time);
}

void addHexadecimal(const QByteArray& bits, QByteArray& text)
{
    constexpr int kDigitBits = 4;
    int digit = 0;
    bool known = true;
    for (int left = int(bits.size()); left > 0; --left) {
        const char bit = bits.at(int(bits.size()) - left);
        known = known && bit != 'x';
        digit = 2 * digit + (bit == '1');
        if (left % kDigitBits != 1)
            continue;
        text += known ? "0123456789abcdef"[digit] : 'x';
        digit = 0;
        known = true;
    }
}

qint64 capturedSamples(const CapturedCore& core)
{
    qint64 samples = 0;
    for (const CapturedWindow& window : core.windows)
        samples += window.samples.size();
    return samples;
}

QString freeName(const CapturedCore& core, QString wanted)
{
    const QStringList names = OXA::flattenedNames(core.items);
    while (names.contains(wanted))
        wanted.prepend("oxa_");
    return wanted;
}

}
