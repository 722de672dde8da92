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

/// A match unit as its hardware and its registers have it. Words hold a port's bits, the least
/// significant first.
struct UnitSetup {
    int index = 0; ///< 0 to 15
    int field = 0; ///< of a sample: the unit's port
    OXA::MatchFunc func = OXA::MatchEqual;
    std::vector<quint64> m0; ///< levels and kinds of edges; a lower bound
    std::vector<quint64> m1; ///< which levels count; an upper bound
    std::vector<quint64> m2; ///< which edges count; 0 in hardware that sees none
    qint64 counter = 0; ///< matches that an output takes; 0 without a counter
    bool continuous = false; ///< matches with a gap between do not add up
};

/// Everything that decides what a core captures.
struct TriggerSetup {
    std::vector<UnitSetup> units; ///< those that are enabled
    std::vector<TriggerTable> levels; ///< the trigger's sequence; empty: by force only
    qint64 captureAmount = 0; ///< samples a window
    qint64 triggerPos = 0; ///< samples of a window before its trigger
    qint64 windowNum = 0; ///< windows a run
};

/// What a core samples: its data signals in field 0, then a field for each available port.
OXACAPTURE_EXPORT SampleRequest sampleRequest(const OXA::AoCore& core);
OXACAPTURE_EXPORT SampleRequest sampleRequest(const OXA::AOCore_Lite& core);

/// What `core` does in every run that a program arms, for that writes these settings first; they
/// are the same on all devices. False when no hardware does what it asks for, with all the reasons
/// in `messages`, their places below `place`.
OXACAPTURE_EXPORT bool triggerSetup(
    const OXA::AoCore& core, const QString& place, TriggerSetup& setup, Messages& messages);

/// Where the trigger lies in windows that `core` takes by itself from power-up on, before anything
/// could write its settings: on some devices, which `arg` names together with the configuration
/// file, one sample later than `core.triggerPos`.
OXACAPTURE_EXPORT qint64 powerUpPosition(const OXA::AoCore& core, const OXA::OxaArg& arg);

/// The devices of the catalogue on which `powerUpPosition` is not `core.triggerPos`, and what it is
/// there.
struct PowerUpShift {
    qint64 position = 0;
    QStringList devices; ///< none: it is the same everywhere
};
OXACAPTURE_EXPORT PowerUpShift powerUpShift(const OXA::AoCore& core, const QString& configFile);

/// The same in words: "32 samples before the trigger; 33 on QX1N-9, QX2A-18".
OXACAPTURE_EXPORT QString powerUpText(const OXA::AoCore& core, const QString& configFile);

}

#endif
