// SPDX-License-Identifier: Apache-2.0
#ifndef ENGINE_ENGINE_PROCESS_H
#define ENGINE_ENGINE_PROCESS_H

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <functional>

namespace OXA_ENGINE {

/// How to start the engine.
struct EngineCommand {
    QString program; ///< a path, or a name that is looked up in PATH
    QString name = "the synthesis engine"; ///< in messages
    QStringList arguments;
    QString directory; ///< working directory of the process
    QProcessEnvironment environment;
    int timeLimit = 0; ///< seconds
    QString outputFile; ///< for the standard output, when it is a result and not messages
};

enum class EngineEnd : int { Done, Failed, Crashed, NotStarted, Stopped, TimedOut };

struct EngineResult {
    EngineEnd end = EngineEnd::NotStarted;
    QString problem; ///< the error; empty when the engine is done
};

/// Runs the engine until it ends, or for at most a second after `stopAsked` returns true or the
/// time limit is reached: then it is terminated, finally killed, with all its child processes.
///
/// `line` gets each line of both output channels, without line end; not a result in a file. Blocks;
/// the thread needs no event loop. Both functions are called in the calling thread.
EngineResult runEngine(const EngineCommand& command, const std::function<bool()>& stopAsked,
    const std::function<void(const QByteArray&)>& line);

}

#endif
