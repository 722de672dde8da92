// SPDX-License-Identifier: Apache-2.0
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
    explicit OXAProxyQxSyn(QObject* parent); ///< `parent`, if any, owns it
    ~OXAProxyQxSyn() override;

    /// Empties the work directory, generates into it, and blocks until synthesis has ended. 0 when
    /// the netlist is written; 1 when synthesis failed (see `errorMessages`); -1 when the
    /// configuration has no core or no known mode. Also -1, with a critical message and nothing
    /// removed, when the configuration cannot be read as XML, when the work directory's name is
    /// empty, or it contains an input or is in the installed cores, and when the netlist would
    /// replace an input. The top wrapper is always generated: `customTop` is not used.
    int startGenerate(OxaArg arg);

    /// Stops the current run only. From any thread. Between runs the call goes to the synthesis
    /// proxy; ours then does not start its first run.
    void tryToStop();

    /// The engine's messages of the last run, if it failed.
    QStringList errorMessages() const;

private:
    _oxa_proxy_qxsyn* d;
};

}

#endif
