#ifndef OXACAPTURE_TARGET_BUILT_CONFIGURATION_H
#define OXACAPTURE_TARGET_BUILT_CONFIGURATION_H

#include "oxacapture/trigger/core_plan.h"

namespace OXA_CAPTURE {

/// A configuration as hardware of one device: what its cores do there, and what they are known by.
struct BuiltConfiguration {
    OXA::OxaArg arg; ///< names the configuration file and the device
    std::vector<CorePlan> cores; ///< in the order of their positions in the wrapper
    std::vector<quint32> fingerprints; ///< of the cores, in the same order
};

/// What the cores' fingerprint registers hold that were built from the files that were generated
/// into `workDir`. False, with `error`, when a file is not as generated.
OXACAPTURE_EXPORT bool generatedFingerprints(const QString& workDir,
    const std::vector<CorePlan>& cores, std::vector<quint32>& fingerprints, QString& error);

/// All that the configuration in the file `configFile` can become: the parts of the device
/// catalogue make a handful of differences, and a core in a chip does not tell its part. None, with
/// everything that is wrong in `messages`, when no hardware does what the cores ask for.
///
/// The results look at the given cores, which have to stay.
OXACAPTURE_EXPORT std::vector<BuiltConfiguration> builtConfigurations(const QString& configFile,
    const QList<OXA::AoCore*>& cores, const QList<OXA::AOCore_Lite*>& liteCores,
    Messages& messages);

}

#endif
