// SPDX-License-Identifier: Apache-2.0
#ifndef ENGINE_ENGINE_RUN_H
#define ENGINE_ENGINE_RUN_H

#include "engine/engine_output.h"

#include <QStringList>

#include <functional>

namespace OXA_ENGINE {

/// One run of the engine's script.
struct EngineRun {
    QString directory; ///< working directory of the engine
    QString script; ///< a Tcl file, relative to `directory`
    QString temporary; ///< for the engine's temporary files, relative to `directory`; has to exist
    QString logFile; ///< for all output of the engine
    std::function<bool()> stopAsked; ///< true ends the run within a second
    EngineOutput::Stage progress; ///< gets the stages that the script reports
};

/// Runs the installed engine, or the one that OXA_SYNTHESIS_ENGINE names, for at most
/// OXA_SYNTHESIS_TIMEOUT seconds (3600). Adds lines to show to `messages`: the engine's errors and
/// warnings and, after a failure, at least one reason. Blocks.
bool runScript(const EngineRun& run, QStringList& messages);

}

#endif
