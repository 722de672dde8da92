#ifndef OXAUTILS_DESIGN_READ_DESIGN_H
#define OXAUTILS_DESIGN_READ_DESIGN_H

#include "oxautils/design/design.h"
#include "oxautils/design/design_sources.h"

#include <functional>

namespace OXA {

/// What a program lets happen while Yosys works.
struct DesignHooks {
    std::function<bool()>
        stopAsked; ///< ends the work within a second when it says so; may be empty
    std::function<void(const QString& stage, int percent)> progress; ///< may be empty
};

/// Reads the signals of a design: every name there is before any optimization. Yosys does it, in a
/// directory of its own; nothing is written beside the sources. Paths stand from the current
/// directory. False when it fails, with lines to show in `error`. Blocks.
OXAUTILS_EXPORT bool readDesign(const DesignSources& sources, Design& design, QString* error,
    const DesignHooks& hooks = DesignHooks());

}

#endif
