// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TRIGGER_TRIGGER_SETUP_H
#define OXACAPTURE_TRIGGER_TRIGGER_SETUP_H

#include "oxacapture/message.h"
#include "oxacapture/oxacapture_export.h"
#include "oxacapture/trigger/trigger_table.h"
#include "oxacapture/waveform/waveform_sampler.h"

#include "oxautils/generate/oxa_arg.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <vector>

namespace OXA_CAPTURE {

/// The register values of a match unit, as far as its hardware has them. Words contain a port's
/// bits, the least significant first.
struct UnitSetup {
    int index = 0; ///< 0 to 15
    int field = 0; ///< of a sample: the unit's port
    OXA::MatchFunc func = OXA::MatchEqual; ///< how values are compared
    std::vector<quint64> m0; ///< logic levels and kinds of edges; a lower bound
    std::vector<quint64> m1; ///< which logic levels are compared; an upper bound
    std::vector<quint64> m2; ///< which edges are compared; 0 in hardware without edges
    qint64 counter = 0; ///< matches until the output is true; 0 without a counter
    bool continuous = false; ///< count only matches at consecutive samples
};

/// Which samples a core stores (`OXA::CoreStorage`).
struct StorageSetup {
    OXA::CoreStorage::Keep keep = OXA::CoreStorage::All; ///< what makes a sample be stored
    int gapBits = 0; ///< of a stored word for the samples passed over in front of it
    std::vector<quint64> watch; ///< of the data signals, those whose changes count
    TriggerTable when; ///< the qualifier
    qint64 limit = 0; ///< samples behind the trigger after which a window ends; 0: when it is full

    /// Whether every sample is stored.
    bool all() const { return keep == OXA::CoreStorage::All; }
};

/// Everything that decides what a core captures.
struct TriggerSetup {
    std::vector<UnitSetup> units; ///< those that are enabled
    std::vector<TriggerTable> levels; ///< the sequence; empty: triggers by force only
    qint64 captureAmount = 0; ///< stored samples of a window
    qint64 triggerPos = 0; ///< trigger position: stored samples of a window before its trigger
    qint64 windowNum = 0; ///< windows of a run
    StorageSetup storage; ///< which samples are stored; amounts and positions count these
    /// The places in the wrapper of the cores whose triggers force this one, ascending.
    QList<int> forcedBy {};
    bool stamps = false; ///< each window has the number of its trigger sample in the run
};

/// Active edges of the sample clock of `core` from that of a trigger sample to the one at which
/// other cores can see it, and the wrapper's trigger output is high (docs/analyzer-cores.md).
OXACAPTURE_EXPORT int pulseDelay(const OXA::AoCore& core);

/// The signals that a core samples: data signals in field 0, then a field for each available port.
OXACAPTURE_EXPORT SampleRequest sampleRequest(const OXA::AoCore& core);
OXACAPTURE_EXPORT SampleRequest sampleRequest(const OXA::AOCore_Lite& core); ///< only data

/// The settings of `core` in every run that a program arms, since the program writes them first;
/// they are the same on all devices. False when no hardware can do what `core` specifies, with all
/// reasons in `messages`, their places below `place`. Which cores force it depends on all cores of
/// the configuration: `corePlans` adds that.
OXACAPTURE_EXPORT bool triggerSetup(
    const OXA::AoCore& core, const QString& place, TriggerSetup& setup, Messages& messages);

/// The trigger position in the power-up capture of `core`, before a program could write its
/// settings: on some devices one more than `core.triggerPos`. `arg` names the device and the
/// configuration file, which also matters.
OXACAPTURE_EXPORT qint64 powerUpPosition(const OXA::AoCore& core, const OXA::OxaArg& arg);

/// The devices of the catalogue on which `powerUpPosition` is not `core.triggerPos`, and its value
/// there.
struct PowerUpShift {
    qint64 position = 0; ///< samples before the trigger
    QStringList devices; ///< empty: it is the same on all devices
};
/// For all devices of the catalogue; `configFile` names the file of `core`, which also matters.
OXACAPTURE_EXPORT PowerUpShift powerUpShift(const OXA::AoCore& core, const QString& configFile);

/// The same as text: "32 samples before the trigger; 33 on QX1N-9, QX2A-18".
OXACAPTURE_EXPORT QString powerUpText(const OXA::AoCore& core, const QString& configFile);

}

#endif
