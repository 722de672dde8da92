// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_BUILD_RUN_H
#define OXAUTILS_GENERATE_BUILD_RUN_H

#include "oxautils/check/problem.h"
#include "oxautils/generate/oxa_arg.h"
#include "oxautils/generate/remembered_builds.h"
#include "oxautils/generate/uart_defines.h"
#include "oxautils/resource/analyzer_estimate.h"

#include <QList>
#include <QMap>
#include <QStringList>

#include <functional>
#include <mutex>

namespace DEV {
struct FamilyLink;
}

namespace OXA {

class OXAProxyQxSyn;
struct Configuration;

/// The end of a build, or of its check.
enum class BuildEnd {
    Done,
    Refused, ///< reasons: `messages` or, when empty, what the generator logged
    NoCores, ///< the configuration has no core
    Invalid, ///< `problems` contain one that prevents building
    TooLarge, ///< the estimate or, after synthesis, the netlist exceeds the part
    Failed, ///< synthesis failed, or a file could not be written
    Stopped,
};

/// What a build came to, or its check.
struct OXAUTILS_EXPORT BuildResult {
    BuildEnd end = BuildEnd::Done; ///< of the last step
    QStringList messages; ///< lines to show; the engine's messages when synthesis failed
    QList<Problem> problems; ///< of the configuration with this part, from `check`
    QStringList files; ///< the sources as OxaPrepare lists them, or the netlist
    QStringList includePaths; ///< of the sources
    QStringList boardSources; ///< the Verilog of `link`, which a simulator may have models for
    QStringList boardFiles; ///< OpenOCD's configuration and constraints for `link`
    QMap<QString, int> cells; ///< number of cells of each type in the netlist
    OXA_TOOL::AnalyzerAmounts takes; ///< what the cells take of the part
};

/// A build of an analyzer: checks the configuration, claims and empties the work directory,
/// generates the Verilog and, unless another tool does it, synthesizes it and compares the netlist
/// with the part.
///
///     BuildRun build(arg, true);
///     BuildResult result = build.check();
///     if (result.end == BuildEnd::Done)
///         result = build.run();
///
/// The program has to ask the user about other files in the work directory (`holdsForeignFiles`).
class OXAUTILS_EXPORT BuildRun {
public:
    /// Without `synthesize` only the Verilog is written.
    BuildRun(const OxaArg& arg, bool synthesize);
    ~BuildRun();
    BuildRun(const BuildRun&) = delete;
    BuildRun& operator=(const BuildRun&) = delete;

    /// Called in the thread of `run` with the progress of synthesis.
    std::function<void(const QString& stage, int percent)> progress;

    /// Also write a module and a component to instantiate, `qx_oxa_template.v` and `.vhd`. The
    /// module is then the last of the sources.
    bool templates = false;

    /// The connection to an analyzer that another tool synthesizes for a family of devices; null
    /// for a part of the catalogue. With a link, the part is not used in checks.
    const DEV::FamilyLink* link = nullptr;
    UartRates uart; ///< of a UART link

    /// With the `original` that the configuration is known by, and the `device`, the build is
    /// remembered (`rememberBuild`) when it is done. Without an `original` it is not.
    RememberedBuild remembered;

    /// The number of errors that the program's message handler has received so far. The generator
    /// only logs files that it cannot write, so a run fails when this number grows.
    std::function<int()> loggedErrors;

    /// Whether the analyzer can be built, before anything is written.
    BuildResult check() const;

    /// Builds it, in any thread. Does not check again, but the generator refuses to delete its
    /// inputs.
    BuildResult run();

    /// Ends `run`, or a synthesis that is about to begin, within a second. From any thread.
    void stop();

private:
    bool writeLink(BuildResult& result, QString* error) const;
    BuildResult generate();
    BuildResult synthesize();
    bool writeTemplates() const;
    void remember(const Configuration& configuration, const QByteArray& content) const;
    bool stopped();
    void setGenerator(OXAProxyQxSyn* generator);

    const OxaArg m_arg;
    const bool m_synthesize;
    std::mutex m_mutex; // guards what follows
    OXAProxyQxSyn* m_generator = nullptr; // for `stop`; null between runs
    bool m_stopped = false;
};

}

#endif
