#ifndef APPS_OXA_EDITOR_BUILD_JOB_H
#define APPS_OXA_EDITOR_BUILD_JOB_H

#include "oxautils/generate/oxa_arg.h"

#include <QObject>
#include <QStringList>
#include <QThread>

#include <memory>
#include <mutex>

namespace OXA {
class OXAProxyQxSyn;
}

enum class BuildOutcome {
    Done,
    Failed, ///< by the engine, or in a file that could not be written
    Stopped, ///< by the user
    Refused, ///< nothing to generate, or nowhere to put it
};

/// Generates and synthesizes in a thread of its own, one run at a time.
class BuildJob : public QObject {
    Q_OBJECT

public:
    explicit BuildJob(QObject* parent = nullptr);

    /// Stops what is running and waits for its end.
    ~BuildJob() override;

    bool isRunning() const { return m_thread != nullptr; }

    /// Begins a run; `synthesize` says whether it goes on to a netlist. `arg.configFile` has to
    /// stay until `finished`. Does nothing while another one is running.
    void start(const OXA::OxaArg& arg, bool synthesize);

    /// Ends the run within a second; `finished` tells when.
    void stop();

    /// Sends what the library logs during a run to that run's `logged`, and the rest to where it
    /// went before. To be called once, at the program's start.
    static void installLog();

Q_SIGNALS:
    void progress(const QString& stage, int percent); ///< -1: nobody knows how far
    void logged(const QString& line);
    void finished(BuildOutcome outcome, const QStringList& messages);

private:
    struct Result {
        BuildOutcome outcome = BuildOutcome::Refused;
        QStringList messages;
    };

    Result run(const OXA::OxaArg& arg, bool synthesize);
    Result generate(const OXA::OxaArg& arg);
    Result synthesize(const OXA::OxaArg& arg);
    void setGenerator(OXA::OXAProxyQxSyn* generator);

    std::unique_ptr<QThread> m_thread;
    std::mutex m_mutex; // guards what follows
    OXA::OXAProxyQxSyn* m_generator = nullptr; // what stop talks to, while there is one
    bool m_stopping = false;
};

Q_DECLARE_METATYPE(BuildOutcome)

#endif
