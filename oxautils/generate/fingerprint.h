#ifndef OXAUTILS_GENERATE_FINGERPRINT_H
#define OXAUTILS_GENERATE_FINGERPRINT_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

class AoCore;

// The fingerprint of a core that was built from the files generated into `workDir`
// (docs/jtag-protocol.md). False, with `error`, when a file is not as generated.

OXAUTILS_EXPORT bool generatedFingerprint(
    const QString& workDir, int position, const AoCore& core, quint32& fingerprint, QString* error);
OXAUTILS_EXPORT bool generatedLiteFingerprint(
    const QString& workDir, quint32& fingerprint, QString* error);

}

#endif
