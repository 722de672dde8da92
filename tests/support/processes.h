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
        const QDeadlineTimer deadline(kPatience);
        bool runs = true;
        do {
            const QByteArray all = said();
            const int at = all.indexOf(text);
            const int end = at < 0 ? -1 : all.indexOf('\n', at);
            if (end >= 0)
                return all.mid(at + text.size(), end - at - text.size()).trimmed();
            if (!runs)
                break;
            runs = !waitForFinished(20);
        } while (!deadline.hasExpired());
        return {};
    }

    /// Waits until what it says matches `pattern`; false when it ends before, or does not for long.
    bool says(const QString& pattern)
    {
        const QRegularExpression wanted(pattern);
        const QDeadlineTimer deadline(kPatience);
        bool runs = true;
        while (!wanted.match(QString::fromUtf8(said())).hasMatch()) {
            if (!runs || deadline.hasExpired())
                return false;
            runs = !waitForFinished(20);
        }
        return true;
    }

    void end()
    {
        if (state() == NotRunning)
            return;
        kill();
        waitForFinished(kPatience);
    }

protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }

private:
    QTemporaryFile m_log;
};

/// Starts OpenOCD for the remote_bitbang server at `port`, and returns its Tcl server's address;
/// empty when it does not run. `taps` declares the chain.
inline QString startOpenOcd(Service& openocd, const QByteArray& port,
    const QByteArray& taps = "jtag newtap fpga tap -irlen 5 -expected-id 0x10a0affd")
{
    openocd.start("openocd",
        {"-c",
            "adapter driver remote_bitbang; remote_bitbang host 127.0.0.1; remote_bitbang port "
                + port + "; " + taps
                + "; gdb_port disabled; telnet_port disabled; tcl_port 0; init"});
    const QByteArray tcl = openocd.after("Listening on port ");
    return tcl.isEmpty() ? QString() : "127.0.0.1:" + QString(tcl).section(' ', 0, 0);
}

#endif
