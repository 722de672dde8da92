// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_RESULT_H
#define OXACAPTURE_FILES_CAPTURE_RESULT_H

#include "oxacapture/progress.h"
#include "oxacapture/trigger/trigger_model.h"

#include <QJsonObject>
#include <QList>

#include <optional>

namespace OXA_CAPTURE {

/// A window with its samples.
struct CapturedWindow {
    Window place; ///< its numbers; of a target, from 0 in each window
    SampleTable samples; ///< those that were stored; field 0: the core's data signals
    bool untriggered = false; ///< the core was stopped while it waited for its trigger
    /// The times of all samples from the first to the last one, stored or not, and, as one more, of
    /// the end of the last one, in the units of the core's `timeExponent`; empty: not known.
    std::vector<quint64> times {};

    /// Where the trigger sample is in `samples`; `kNoSample` without one.
    qint64 triggerOffset() const { return place.triggerIndex(); }
};

/// How often a match unit matched while its core waited.
struct UnitMatches {
    int unit = 0; ///< 0 to 15
    qint64 matches = 0; ///< samples at which it matched
};

/// What one core captured.
struct CapturedCore {
    int index = 0; ///< the core's index in the configuration
    QList<OXA::SignalItem> items; ///< the data signals, most significant first
    OXA::CoreStorage storage {}; ///< which samples were stored
    std::vector<CapturedWindow> windows; ///< in the order in which they were taken
    QString progress; ///< how far the trigger's sequence got
    bool waited = false; ///< a target's core was stopped while it waited for a trigger; then:
    int level = 0; ///< expressions of the sequence satisfied
    qint64 window = 0; ///< the window that it waited for, counted from 0
    std::vector<UnitMatches> matches; ///< up to `kCountedMatches`
    QString names; ///< of a target's core: "verified" against its sums of names, or "unknown"
    /// Frequency of the sample clock, for times when those of the windows are not known; 0:
    /// unknown.
    double clockHz = 0;
    int timeExponent = 0; ///< a unit of the windows' times is 10 to the power of this, in seconds
    QString sampleClock {}; ///< its name; empty: not known
    bool fallingEdge = false; ///< of the sample clock takes samples; else its rising edge
    QList<int> forcedBy {}; ///< indexes of the cores whose triggers could force it in this run
    int pulseDelay = 0; ///< edges from a trigger sample to that at which other cores can see it

    /// Whether a trigger of another core could force it, or has.
    bool showsForced() const;
    bool hasStamps() const; ///< whether its windows have stamps
    /// Whether the signals keep their values from one stored sample to the next.
    bool holds() const
    {
        return storage.isDefault()
            || (storage.keep == OXA::CoreStorage::Changes && storage.watch.isEmpty());
    }
    /// Whether how far the stored samples are apart is known.
    bool knowsGaps() const { return storage.isDefault() || storage.gapBits > 0; }

    /// Whether there is a window with a trigger; for a Lite core, whether there are samples.
    bool triggered() const { return !windows.empty() && !windows.front().untriggered; }
};

/// What all cores of a configuration captured, in its order.
using Capture = std::vector<CapturedCore>;

/// The windows `places` with their samples from `sampled`, whose field 0 has the data signals.
OXACAPTURE_EXPORT std::vector<CapturedWindow> cutWindows(
    const std::vector<Window>& places, const SampleTable& sampled);

/// Gives the samples of `core` their times. `times` has those of all samples that the core took its
/// windows from, in units of 10 to the power of `exponent` in seconds; without it, does nothing.
OXACAPTURE_EXPORT void addTimes(
    CapturedCore& core, const std::vector<quint64>& times, std::optional<int> exponent);

/// How the forced windows of a core stand to those of the core that forced them, in a capture of a
/// target.
struct CoreAlignment {
    bool isWanted = false; ///< it has forced windows; else nothing more is set
    int core = -1; ///< index of the core that forced them; -1: not aligned
    double tolerance = 0; ///< of the distance, in seconds to both sides
    QString reason; ///< why it is not aligned; else empty
};

/// Writes a capture in the format given by the suffix of `path`: .vcd, .fst, .csv or .sr. The file
/// is written as a whole, or unchanged: then the result is false, and `error` has the reason. When
/// `progress` stops the work, that is an error too. "-" is the standard output, for a .vcd file,
/// and "-.csv" for another format.
OXACAPTURE_EXPORT bool writeCapture(
    const QString& path, const Capture& capture, QString* error, const Progress& progress = {});

/// Whether `writeCapture` can write to `path`, as far as that is known before the capture: the
/// suffix is known, and an existing file can be replaced. Else `error` has the reason.
OXACAPTURE_EXPORT bool mayWriteCapture(const QString& path, QString* error);

/// Whether the samples go to the standard output, or another stream that cannot be read back.
OXACAPTURE_EXPORT bool isCaptureStream(const QString& path);

/// The windows of every core, without their samples, for programs.
OXACAPTURE_EXPORT QJsonObject captureObject(const Capture& capture);
OXACAPTURE_EXPORT QByteArray captureJson(const Capture& capture); ///< the same as a text

}

#endif
