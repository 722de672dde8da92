// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_GTKW_WRITER_H
#define OXACAPTURE_FILES_GTKW_WRITER_H

#include "oxacapture/files/capture_file.h"

namespace OXA_CAPTURE {

/// The save file of GTKWave for the dump `path`: "x.gtkw" for "x.vcd".
OXACAPTURE_EXPORT QString gtkwPath(const QString& path);

/// Writes that file, which shows all signals of `capture`, the names of their values and the
/// trigger. Each signal whose values have names gets a translation file beside it. False with
/// `error` when a file cannot be written.
OXACAPTURE_EXPORT bool writeGtkw(
    const QString& path, const Capture& capture, const OXA::StateNames& states, QString* error);

}

#endif
