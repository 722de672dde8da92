// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_ATTACH_H
#define OXAUTILS_DESIGN_ATTACH_H

#include "oxautils/config/configuration.h"
#include "oxautils/design/design_index.h"
#include "oxautils/design/read_design.h"

namespace OXA {

class DesignScript;

/// The output for an attached design.
enum class AttachForm {
    Yosys, ///< a script that adds the analyzer to a design that Yosys has read
    Verilog, ///< design and analyzer in one file, for any tool
    Hierarchical, ///< a wrapper that refers to the design's nets by path
};

/// A bit that the analyzer watches.
struct WatchedBit {
    QString name; ///< of the port of `qx_oxa`
    DesignBit bit; ///< in the design
};

/// The ports of `qx_oxa` for TMS, TCK, TDI and TDO.
OXAUTILS_EXPORT QStringList jtagPads();

/// The analyzer and the design that it is attached to.
struct OXAUTILS_EXPORT AttachRequest {
    DesignSources sources; ///< of the design
    QStringList names; ///< of the signals that are ports of `qx_oxa`: `watchedNames`
    QStringList analyzerFiles; ///< its Verilog, as `BuildRun` lists it
    QStringList includePaths; ///< of these
    QStringList primitives; ///< Verilog of the cells that it uses; only their ports matter
    /// The wrapper's ports that are connected to the analyzer's pads of TMS, TCK, TDI and TDO, with
    /// empty names for pads that are not used. A name that the top has, too, is that port.
    QStringList pads = jtagPads();
    bool sharesClock = false; ///< the second pad is a port of the top, the clock of a UART link
    QString workDir; ///< for all output; has to exist
    QStringList outputs; ///< of `qx_oxa`, for triggers: `triggerOutputs`; the wrapper has them, too
};

/// Names of the files in the work directory.
constexpr char ATTACH_WRAPPER_FILE_NAME[] = "attach.v";
constexpr char ATTACH_SCRIPT_FILE_NAME[] = "attach.ys"; ///< for Yosys

/// The signals that the analyzers of a configuration watch, bit by bit, each once.
OXAUTILS_EXPORT QStringList watchedNames(const Configuration& configuration);

/// Attaches an analyzer to a design without changing its sources: a wrapper with the top's ports
/// and the four JTAG pads instantiates both.
///
///     Attachment attachment(request, hooks);
///     if (attachment.read(&error) && attachment.write(AttachForm::Yosys, &error)) ...
///
/// When a function returns false, `error` has lines to show. All except `write` run Yosys.
class OXAUTILS_EXPORT Attachment {
public:
    /// Of `request`, which is copied. The hooks are called while Yosys runs, in the thread of the
    /// call.
    explicit Attachment(const AttachRequest& request, const DesignHooks& hooks = DesignHooks());

    /// Reads the design, and finds each name in it.
    bool read(QString* error);

    const Design& design() const { return m_design; } ///< after `read`

    /// The name of the wrapper's module: the top's, so that constraints still apply; for the
    /// hierarchical form, which also compiles the top, "TOP_with_analyzer".
    QString wrapperName(AttachForm form) const;

    /// Writes the wrapper of `form` and, for Yosys, the script.
    bool write(AttachForm form, QString* error);

    /// Writes design and analyzer as one flattened module to `output`. The file `simulation` (may
    /// be empty) is the same, but registers without initial value start at 0 instead of X. Call
    /// `write` with the form Verilog before.
    bool writeVerilog(const QString& output, const QString& simulation, QString* error);

    /// The modules whose instances are in that file without their content: primitives, and modules
    /// that the design's sources do not have.
    QStringList missingModules() const { return m_missingModules; }

    /// The analyzer as a part of a test bench, beside the design with its top at the path
    /// `instance`: an instance u_oxa of `qx_oxa`. The pads are nets of that bench. `isFlat`: the
    /// design is the file from `writeDesign`.
    QByteArray besideDesign(const QString& instance, bool isFlat) const;

    /// Writes the design alone to `path`, for a simulator that cannot read its sources: one
    /// flattened module, with a 0 for each register without initial value.
    bool writeDesign(const QString& path, QString* error);

    /// The result of a proof.
    struct Proof {
        bool proven = false; ///< else see `open`
        QStringList open; ///< outputs and registers that may differ
        double seconds = 0; ///< that Yosys took
    };

    /// Proves that every output and register of the design is the same with and without the
    /// analyzer, for the same inputs: sequential equivalence by induction, and equal initial
    /// values. `wrapper` is a file with the wrapper's module, or the output of `writeVerilog`;
    /// empty: the wrapper in the work directory. False when Yosys failed.
    bool prove(const QString& wrapper, Proof& proof, QString* error);

    /// Lines to show: what Yosys left out, and modules that were flattened despite keep_hierarchy.
    QStringList warnings() const { return m_warnings; }

private:
    QString pathTo(const QString& file) const
    {
        return m_request.workDir + QLatin1Char('/') + file;
    }
    bool findBits(QString* error);
    bool writeScript(QString* error) const;
    void addDesign(DesignScript& script) const;
    void addWrapper(DesignScript& script, const QString& file) const;
    void addProof(DesignScript& script, const QString& wrapper, bool isFlat) const;

    const AttachRequest m_request;
    const DesignHooks m_hooks;
    Design m_design;
    QVector<WatchedBit> m_watched;
    QStringList m_warnings;
    QStringList m_missingModules;
};

}

#endif
