#ifndef OXACAPTURE_FILES_CAPTURE_RESULT_H
#define OXACAPTURE_FILES_CAPTURE_RESULT_H

#include "oxacapture/progress.h"
#include "oxacapture/trigger/trigger_model.h"

#include <QList>

namespace OXA_CAPTURE {

/// A window with its samples.
struct CapturedWindow {
    Window place;
    SampleTable samples; ///< field 0: the core's data signals
    bool untriggered = false; ///< the core was stopped when it still waited for its trigger

    /// The trigger's place among the samples; `kNoSample` without one.
    qint64 triggerOffset() const
    {
        return place.triggerSample == kNoSample ? kNoSample
                                                : place.triggerSample - place.firstSample;
    }
};

/// How often the comparison of a match unit held while its core waited.
struct UnitMatches {
    int unit = 0;
    qint64 matches = 0;
};

/// What one core captured.
struct CapturedCore {
    int index = 0; ///< the core's own number
    QList<OXA::SignalItem> items; ///< the data signals, most significant first
    std::vector<CapturedWindow> windows; ///< in the order in which they were taken
    QString progress; ///< how far the trigger's sequence got
    bool waited = false; ///< a chip's core was stopped when it waited for a trigger; then:
    int level = 0; ///< expressions of the sequence satisfied
    qint64 window = 0; ///< the one that it waited for, counted from 0
    std::vector<UnitMatches> matches; ///< up to `kCountedMatches`
    QString names; ///< of a chip's core: "verified" against the chip, or "unknown" to it
    double clockHz = 0; ///< of the sample clock, the same for all cores of a file; 0: unknown

    /// There is a window with its trigger; of a Lite core, which has none, there are samples.
    bool triggered() const { return !windows.empty() && !windows.front().untriggered; }
};

/// What all cores of a configuration captured, in its order.
using Capture = std::vector<CapturedCore>;

/// The windows `places` with the samples that they hold of `sampled`, whose field 0 are the data.
OXACAPTURE_EXPORT std::vector<CapturedWindow> cutWindows(
    const std::vector<Window>& places, const SampleTable& sampled);

/// Writes a capture in the format that the ending of `path` names: .vcd, .csv or .sr. The file is
/// there as a whole or as it was before: then false, and `error` says why. `progress` may stop it,
/// which is an error, too.
OXACAPTURE_EXPORT bool writeCapture(
    const QString& path, const Capture& capture, QString* error, const Progress& progress = {});

/// Whether `writeCapture` can write to `path`, as far as that can be told before there is anything
/// to write: it knows the ending, and what is there can be replaced. `error` says why not.
OXACAPTURE_EXPORT bool mayWriteCapture(const QString& path, QString* error);

/// The windows of every core, without their samples, for programs.
OXACAPTURE_EXPORT QByteArray captureJson(const Capture& capture);

}

#endif
