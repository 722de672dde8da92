#ifndef OXAUTILS_GENERATE_BUILD_RUN_H
#define OXAUTILS_GENERATE_BUILD_RUN_H

#include "oxautils/check/problem.h"
#include "oxautils/generate/oxa_arg.h"

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

/// How a build ended, or what stops one before it begins.
enum class BuildEnd {
    Done,
    Refused, ///< by `messages` or, when there are none, by what the generator has logged
    NoCores, ///< in the configuration
    Invalid, ///< `problems` hold one that stops a build
    TooLarge, ///< for the part: the estimate or, after synthesis, the netlist
    Failed, ///< by the engine, or in a file that could not be written
    Stopped,
};

struct OXAUTILS_EXPORT BuildResult {
    BuildEnd end = BuildEnd::Done;
    QStringList messages; ///< to show line by line; the engine's own words when synthesis failed
    QList<Problem> problems; ///< of the configuration with this part, from `check`
    QStringList files; ///< the sources as OxaPrepare lists them, or the netlist
    QStringList includePaths; ///< of the sources
    QStringList boardSources; ///< the Verilog of `link`, which a simulator may have models for
    QStringList boardFiles; ///< OpenOCD's configuration and constraints for `link`
    QMap<QString, int> cells; ///< how many of each type the netlist holds
};

/// A build of an analyzer: the configuration is checked, the work directory claimed and emptied,
/// the Verilog generated and, unless another tool does that, synthesized, and the netlist compared
/// with the part.
///
///     BuildRun build(arg, true);
///     BuildResult result = build.check();
///     if (result.end == BuildEnd::Done)
///         result = build.run();
///
/// Whose files are in the work directory is for the program to ask, with `holdsForeignFiles`.
class OXAUTILS_EXPORT BuildRun {
public:
    /// Without `synthesize` only the Verilog is written.
    BuildRun(const OxaArg& arg, bool synthesize);
    ~BuildRun();
    BuildRun(const BuildRun&) = delete;
    BuildRun& operator=(const BuildRun&) = delete;

    /// Told in the thread of `run` how far synthesis is.
    std::function<void(const QString& stage, int percent)> progress;

    /// Also write a module and a component to instantiate, `qx_oxa_template.v` and `.vhd`. With the
    /// sources, the module is the last of them.
    bool templates = false;

    /// The way to an analyzer that another tool synthesizes for a family of devices; null for a
    /// part of the catalogue. Then the part decides nothing: neither what is a problem nor what
    /// fits.
    const DEV::FamilyLink* link = nullptr;

    /// How many errors the program's message handler has taken so far. The generator only logs what
    /// it cannot write, so a run that adds to them has failed.
    std::function<int()> loggedErrors;

    /// Whether the analyzer can be built, before anything is written.
    BuildResult check() const;

    /// Builds it, in any thread. Nothing is checked again, but the generator refuses to lose what
    /// it reads.
    BuildResult run();

    /// Ends `run`, or a synthesis that it is about to begin, within a second. From any thread.
    void stop();

private:
    BuildResult generate();
    BuildResult synthesize();
    bool writeTemplates() const;
    bool stopped();
    void setGenerator(OXAProxyQxSyn* generator);

    const OxaArg m_arg;
    const bool m_synthesize;
    std::mutex m_mutex; // guards what follows
    OXAProxyQxSyn* m_generator = nullptr; // what `stop` talks to, while there is one
    bool m_stopped = false;
};

}

#endif
