// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_PROCESSES_H
#define TESTS_SUPPORT_PROCESSES_H

#include "support/patience.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <csignal>
#include <sys/prctl.h>

/// A process that ends with its object, and with the test when that is killed. What it says goes to
/// a file, for a pipe that nobody empties would stop it.
class Service : public QProcess {
public:
    Service()
    {
        m_log.open();
        setProcessChannelMode(MergedChannels);
        setStandardOutputFile(m_log.fileName());
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        setChildProcessModifier(endWithTest);
#endif
    }
    ~Service() override { end(); }

    QByteArray said()
    {
        m_log.seek(0);
        return m_log.readAll();
    }

    /// Waits until it says `text`, and returns the rest of that line; empty when it ends before, or
    /// does not say it for long.
    QByteArray after(const QByteArray& text)
    {
        const QString pattern = QRegularExpression::escape(text) + "(.*)\n";
        return said(pattern).captured(1).trimmed().toUtf8();
    }

    /// Waits until what it says matches `pattern`; false when it ends before, or does not for long.
    bool says(const QString& pattern) { return said(pattern).hasMatch(); }

    void end()
    {
        if (state() == NotRunning)
            return;
        kill();
        waitForFinished(kPatience);
    }

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
protected:
    void setupChildProcess() override { endWithTest(); }
#endif

private:
    static void endWithTest() { prctl(PR_SET_PDEATHSIG, SIGKILL); }

    QRegularExpressionMatch said(const QString& pattern)
    {
        const QRegularExpression wanted(pattern);
        const QDeadlineTimer deadline(kPatience);
        for (bool ended = false;; ended = waitForFinished(20) || deadline.hasExpired()) {
            const QRegularExpressionMatch match = wanted.match(QString::fromUtf8(said()));
            if (match.hasMatch() || ended)
                return match;
        }
    }

    QTemporaryFile m_log;
};

/// The address of the Tcl server of a process that runs OpenOCD; empty when there is none.
inline QString tclAddress(Service& openocd)
{
    const QString tcl = openocd.after("Listening on port ");
    return tcl.isEmpty() ? QString() : "127.0.0.1:" + tcl.section(' ', 0, 0);
}

constexpr char kOwnTap[] = "jtag newtap fpga tap -irlen 5 -expected-id 0x10a0affd";

/// Starts OpenOCD for the remote_bitbang server at `port`, and returns its Tcl server's address;
/// empty when it does not run. `taps` declares the chain.
inline QString startOpenOcd(
    Service& openocd, const QByteArray& port, const QByteArray& taps = kOwnTap)
{
    openocd.start("openocd",
        {"-c",
            "adapter driver remote_bitbang; remote_bitbang host 127.0.0.1; remote_bitbang port "
                + port + "; " + taps
                + "; gdb_port disabled; telnet_port disabled; tcl_port 0; init"});
    return tclAddress(openocd);
}

#endif
