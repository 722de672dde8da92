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
    QString directory; ///< it runs there
    QProcessEnvironment environment;
    int timeLimit = 0; ///< seconds
    QString outputFile; ///< takes the standard output, when that is a result and no message
};

enum class EngineEnd : int { Done, Failed, Crashed, NotStarted, Stopped, TimedOut };

struct EngineResult {
    EngineEnd end = EngineEnd::NotStarted;
    QString problem; ///< says what happened, unless the engine is done
};

/// Runs the engine to its end, which is within a second once `stopAsked` says so or the limit is
/// reached: it is asked to terminate, then killed, with every process it started.
///
/// Each line of what it prints (both channels, without the line's end) goes to `line`, but for a
/// result in a file. Blocks; the thread needs no event loop. Both functions are called from the
/// calling thread.
EngineResult runEngine(const EngineCommand& command, const std::function<bool()>& stopAsked,
    const std::function<void(const QByteArray&)>& line);

}

#endif
