#ifndef OXACAPTURE_TARGET_FINGERPRINT_H
#define OXACAPTURE_TARGET_FINGERPRINT_H

#include "oxacapture/oxacapture_export.h"

#include "oxautils/model/ao_core.h"

#include <QString>

namespace OXA_CAPTURE {

// The fingerprint of a core that was built from the files generated into `workDir`
// (docs/jtag-protocol.md). False, with `error`, when a file is not as generated.

OXACAPTURE_EXPORT bool generatedFingerprint(const QString& workDir, int position,
    const OXA::AoCore& core, quint32& fingerprint, QString* error);
OXACAPTURE_EXPORT bool generatedLiteFingerprint(
    const QString& workDir, quint32& fingerprint, QString* error);

}

#endif
