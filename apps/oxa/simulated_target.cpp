#include "simulated_target.h"

#include "installed.h"

#include "oxautils/generate/oxa_prepare.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QThread>

namespace {

constexpr int kStartTimeout = 20000; // ms until the simulator listens
constexpr int kPlayTimeout = 60000; // ms for one order to play
constexpr int kCompilePoll = 100; // ms between questions whether to go on
constexpr int kStopTimeout = 5000; // ms

bool writeText(const QString& path, const QByteArray& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

}

SimulatedTarget::~SimulatedTarget()
{
    if (m_vvp.state() == QProcess::NotRunning)
        return;
    m_vvp.kill();
    m_vvp.waitForFinished(kStopTimeout);
}

bool SimulatedTarget::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool SimulatedTarget::build(
    const Design& design, const StimulusPorts& ports, const std::function<bool()>& goesOn)
{
    m_workDir = design.workDir;
    // Verilog keeps unknown values to itself, gates do not.
    m_settle = design.netlist.isEmpty() ? QStringList() : QStringList {"+oxa_settle=1"};
    const QString bench = m_workDir + "/testbench.v";
    QStringList sources;
    if (!generate(design, sources))
        return false;
    if (!writeText(bench, testbench(ports)))
        return fail(bench + ": cannot be written");
    return compile(QStringList {"-g2005", "-s", "oxa_testbench", "-o", m_workDir + "/target.vvp",
                       "-y", installed("share/oxautils/sim")}
            + sources + QStringList {bench},
        goesOn);
}

bool SimulatedTarget::generate(const Design& design, QStringList& sources)
{
    OXA::OxaPrepare prepared;
    if (prepared.prepare(design.arg) != 1)
        return fail("the Verilog could not be generated");
    if (!design.netlist.isEmpty()) {
        sources = QStringList {"-y", installed("share/oxautils/cells"), design.netlist};
        return true;
    }
    for (const QString& path : qAsConst(prepared.includePaths))
        sources += "-I" + path;
    sources += prepared.files;
    return true;
}

bool SimulatedTarget::compile(const QStringList& arguments, const std::function<bool()>& goesOn)
{
    QProcess iverilog;
    iverilog.setProcessChannelMode(QProcess::MergedChannels);
    iverilog.start("iverilog", arguments);
    if (!iverilog.waitForStarted())
        return fail("iverilog does not start (package iverilog): " + iverilog.errorString());
    while (!iverilog.waitForFinished(kCompilePoll)) {
        if (goesOn())
            continue;
        iverilog.kill();
        iverilog.waitForFinished(kStopTimeout);
        return fail({});
    }
    const QString log = QString::fromLocal8Bit(iverilog.readAll()).trimmed();
    return (iverilog.exitStatus() == QProcess::NormalExit && iverilog.exitCode() == 0)
        || fail("iverilog does not accept the Verilog:\n" + log);
}

bool SimulatedTarget::start(const QString& stimulus)
{
    m_vvp.setProcessChannelMode(QProcess::MergedChannels);
    m_vvp.setStandardOutputFile(m_workDir + "/vvp.log");
    m_vvp.start("vvp",
        QStringList {"-n", "-M", installed(OXA_LIBDIR "/oxautils"), "-m", "oxa_target",
            m_workDir + "/target.vvp", "+oxa_jtag=unix:" + m_sockets.filePath("jtag"),
            "+oxa_control=unix:" + m_sockets.filePath("control"), "+oxa_stimulus=" + stimulus}
            + m_settle);
    if (!m_vvp.waitForStarted())
        return fail("vvp does not start (package iverilog): " + m_vvp.errorString());
    return connectTo("jtag", [this](const QString& at) { return m_jtag.connectTo(at); })
        && connectTo("control", [this](const QString& at) { return m_control.connectTo(at); });
}

bool SimulatedTarget::connectTo(
    const QString& name, const std::function<bool(const QString&)>& connect)
{
    const QDeadlineTimer deadline(kStartTimeout);
    while (!connect("unix:" + m_sockets.filePath(name))) {
        if (m_vvp.waitForFinished(10) || deadline.hasExpired())
            return fail("the simulator does not run: " + lastWords());
    }
    return true;
}

bool SimulatedTarget::play(qint64 steps)
{
    QByteArray answer;
    const auto isWhole = [](const QByteArray& so) { return so.endsWith('\n'); };
    const QByteArray count = QByteArray::number(steps);
    if (!m_control.exchange("run " + count + '\n', isWhole, answer, kPlayTimeout))
        return fail("the simulator stopped: " + m_control.error() + lastWords());
    return answer == "ran " + count + '\n'
        || fail("the simulator did not play the waveform: " + QString(answer).trimmed());
}

QString SimulatedTarget::lastWords()
{
    QFile log(m_workDir + "/vvp.log");
    return log.open(QIODevice::ReadOnly)
        ? QString::fromLocal8Bit(log.readAll().right(500)).trimmed()
        : QString();
}
