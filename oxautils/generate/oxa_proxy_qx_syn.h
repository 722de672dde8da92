#ifndef OXAUTILS_GENERATE_OXA_PROXY_QX_SYN_H
#define OXAUTILS_GENERATE_OXA_PROXY_QX_SYN_H

#include "oxautils/generate/oxa_arg.h"

#include <QObject>
#include <QStringList>

namespace OXA {

struct _oxa_proxy_qxsyn;

/// Writes the Verilog of an analyzer and synthesizes it.
///
/// The synthesis proxy is a child object (`findChild<NorvoSyn::QxSynthesisSyncProxy*>()`), for
/// hosts that show its progress.
class OXAUTILS_EXPORT OXAProxyQxSyn : public QObject {
    Q_OBJECT

public:
    explicit OXAProxyQxSyn(QObject* parent);
    ~OXAProxyQxSyn() override;

    /// Empties the work directory, generates into it, and blocks until synthesis ended. 0 when the
    /// netlist is written; 1 when synthesis failed (see `errorMessages`); -1 when the configuration
    /// has no core or no known mode. Also -1, with a critical message and nothing removed, when the
    /// configuration is no XML that can be read, when the work directory has no name, holds what
    /// the run reads or lies in the installed cores, and when the netlist would replace what the
    /// run reads. The top wrapper is always ours: `customTop` does not count here.
    int startGenerate(OxaArg arg);

    /// Stops the run that is going on, and no other. From any thread. Between runs this is the
    /// synthesis proxy's affair; ours keeps its first run from starting.
    void tryToStop();

    /// The engine's messages of the last run, when it failed.
    QStringList errorMessages() const;

private:
    _oxa_proxy_qxsyn* d;
};

}

#endif
