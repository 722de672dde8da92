// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_READ_DESIGN_H
#define OXAUTILS_DESIGN_READ_DESIGN_H

#include "oxautils/design/design.h"
#include "oxautils/design/design_sources.h"

#include <functional>

namespace OXA {

/// The hooks of a program while Yosys runs.
struct DesignHooks {
    std::function<bool()> stopAsked; ///< true ends the work within a second; may be empty
    std::function<void(const QString& stage, int percent)> progress; ///< may be empty
};

/// Reads the signals of a design with Yosys: every name before any optimization. Writes nothing
/// beside the sources. Paths are relative to the current directory. False on failure, with lines to
/// show in `error`. Blocks.
OXAUTILS_EXPORT bool readDesign(const DesignSources& sources, Design& design, QString* error,
    const DesignHooks& hooks = DesignHooks());

}

#endif
