// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_WAVEFORM_DESIGN_H
#define OXACAPTURE_WAVEFORM_WAVEFORM_DESIGN_H

#include "oxacapture/oxacapture_export.h"

#include "oxautils/design/design.h"

namespace OXA_CAPTURE {

/// The signals that the waveform `path`, of any kind that `VcdReader` reads, declares, as those of
/// a design; bits that are declared one by one become one signal. False when it cannot be read,
/// with a line in `error`.
OXACAPTURE_EXPORT bool readWaveformSignals(
    const QString& path, OXA::Design& design, QString* error);

}

#endif
