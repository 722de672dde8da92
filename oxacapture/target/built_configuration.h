// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_BUILT_CONFIGURATION_H
#define OXACAPTURE_TARGET_BUILT_CONFIGURATION_H

#include "oxacapture/trigger/core_plan.h"

namespace OXA_CAPTURE {

/// A configuration built for one device: the behavior of its cores, and their fingerprints.
struct BuiltConfiguration {
    OXA::OxaArg arg; ///< names the configuration file and the device
    std::vector<CorePlan> cores; ///< in the order of their positions in the wrapper
    std::vector<quint32> fingerprints; ///< of the cores, in the same order
};

/// The fingerprints of cores that were built from the files generated into `workDir`. False, with
/// `error`, when a file is not as generated.
OXACAPTURE_EXPORT bool generatedFingerprints(const QString& workDir,
    const std::vector<CorePlan>& cores, std::vector<quint32>& fingerprints, QString* error);

/// All different builds of the configuration in the file `configFile`: a few depend on the part,
/// and a core in a chip does not report its part. None, with all reasons in `messages`, when no
/// hardware can do what the cores specify.
///
/// The results point to the given cores, which have to outlive them.
OXACAPTURE_EXPORT std::vector<BuiltConfiguration> builtConfigurations(const QString& configFile,
    const QList<OXA::AoCore*>& cores, const QList<OXA::AOCore_Lite*>& liteCores,
    Messages& messages);

}

#endif
