#ifndef ENGINE_ENGINE_RUN_H
#define ENGINE_ENGINE_RUN_H

#include "engine/engine_output.h"

#include <QStringList>

#include <functional>

namespace OXA_ENGINE {

/// One run of the engine's script.
struct EngineRun {
    QString directory; ///< it runs there
    QString script; ///< a file in Tcl, seen from `directory`
    QString temporary; ///< for files of its own, seen from `directory`; it has to be there
    QString logFile; ///< takes all that the engine prints
    std::function<bool()> stopAsked; ///< ends the run within a second when it says so
    EngineOutput::Stage progress; ///< gets the stages that the script announces
};

/// Runs the engine that is installed, or the one that OXA_SYNTHESIS_ENGINE names, for at most
/// OXA_SYNTHESIS_TIMEOUT seconds (3600). Both outcomes add lines to show to `messages`: the
/// engine's errors and warnings, and of a run that failed at least one reason. Blocks.
bool runScript(const EngineRun& run, QStringList& messages);

}

#endif
