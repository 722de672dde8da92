// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_LIVE_TARGET_H
#define TESTS_SUPPORT_LIVE_TARGET_H

#include "support/processes.h"

#include <QTemporaryDir>

/// A simulated target behind the real OpenOCD: `oxa target` and `openocd`, on ports of their own.
class LiveTarget {
public:
    Service target;
    Service openocd;

    /// Serves `configuration` with the waveform, if one is named; false when one of the two does
    /// not run.
    bool start(const QString& configuration, const QString& stimulus, const QStringList& more = {},
        const QString& part = "QX3A-10ALV-QFN88-C8")
    {
        target.start(OXA_PROGRAM,
            QStringList {"target", configuration, "--part", part, "--port", "0"}
                + (stimulus.isEmpty() ? QStringList() : QStringList {"--stimulus", stimulus})
                + more);
        m_port = target.after("waits at port ").split(';').first();
        return !m_port.isEmpty() && connectOpenOcd();
    }

    /// Serves a simulation of `vvp` that calls $oxa_target.
    bool startSimulation(const QString& file)
    {
        target.start("vvp",
            {"-n", "-M", OXA_BINARY_DIR "/lib/oxautils", "-m", "oxa_target", file,
                "+oxa_jtag=tcp:0"});
        m_port = target.after("remote_bitbang at port ");
        return !m_port.isEmpty() && connectOpenOcd();
    }

    /// Starts OpenOCD with the chain that we install, or starts it again.
    bool connectOpenOcd()
    {
        openocd.end();
        openocd.start("openocd",
            {"-c", "set OXA_PORT " + m_port, "-f",
                OXA_BINARY_DIR "/share/oxautils/openocd/simulated-target.cfg", "-c", "tcl_port 0"});
        m_address = tclAddress(openocd);
        return !m_address.isEmpty();
    }

    /// The remote_bitbang server's port.
    const QByteArray& port() const { return m_port; }
    /// OpenOCD's Tcl server.
    const QString& address() const { return m_address; }

private:
    QByteArray m_port;
    QString m_address;
};

#endif
