// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_FINGERPRINT_H
#define OXAUTILS_GENERATE_FINGERPRINT_H

#include "oxautils/generate/name_sums.h"

#include <vector>

namespace OXA {

struct Configuration;

/// The fingerprint of `core`, at `position` among its cores, that was built from the files
/// generated into `workDir` (docs/jtag-protocol.md). False, with `error`, when a file is not as
/// generated.
OXAUTILS_EXPORT bool generatedFingerprint(
    const QString& workDir, int position, const AoCore& core, quint32& fingerprint, QString* error);
/// The same for the one core of a Lite configuration.
OXAUTILS_EXPORT bool generatedLiteFingerprint(
    const QString& workDir, quint32& fingerprint, QString* error);

/// The checksums by which a chip shows what its cores were built from, in the order of positions.
struct BuildSums {
    std::vector<quint32> fingerprints; ///< one of each core
    QList<NameSums> names; ///< an empty one: of a core that was built without them
};

/// The same for all cores of `configuration`, whose files were generated into `workDir`.
OXAUTILS_EXPORT bool generatedSums(
    const QString& workDir, const Configuration& configuration, BuildSums& sums, QString* error);

}

#endif
