#include "oxacapture/simulator/simulated_target.h"

#include "files/replace_file.h"
#include "oxacapture/simulator/process_patience.h"
#include "oxacapture/simulator/stimulus_file.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/model/shown_text.h"

#include <QDir>
#include <QRegularExpression>
#include <QThread>

#include <csignal>

namespace OXA_CAPTURE {

namespace {

constexpr int kLook = 5000; // ms between checks of a simulator without output
constexpr int kCompilePoll = 100; // ms between calls of `goesOn`
constexpr int kLogLines = 20; // of the compiler's log that are shown
constexpr qint64 kMostAnswer = 1 << 20; // bytes

QString absolute(const QString& path) { return QFileInfo(path).absoluteFilePath(); }

/// The beginning of the compiler's log, and how much more there is.
QString firstLines(const QString& path)
{
    QFile log(path);
    QString text;
    int more = 0;
    log.open(QIODevice::ReadOnly);
    for (int i = 0; !log.atEnd(); ++i) {
        const QByteArray line = log.readLine(1 << 16);
        if (i < kLogLines)
            text += QString::fromLocal8Bit(line);
        else
            ++more;
    }
    return more == 0 ? text.trimmed()
                     : text
            + QString("... %1 more lines; `oxa simulate --keep-work DIR` keeps them in"
                      " DIR/iverilog.log")
                  .arg(more);
}

struct Signal {
    int number;
    const char* shellSays;
};

// Signals of a program that has a fault or uses too much memory.
constexpr Signal kSignals[] = {
    {SIGILL,  "Illegal instruction"     },
    {SIGABRT, "Aborted"                 },
    {SIGBUS,  "Bus error"               },
    {SIGFPE,  "Floating point exception"},
    {SIGKILL, "Killed"                  },
    {SIGSEGV, "Segmentation fault"      },
};

/// The signal that ended the compiler or its child process, which iverilog starts in a shell; null
/// when there was none. Without the shell's `words`, the status is a number of errors.
const Signal* endingSignal(const QProcess& iverilog, const QString& words)
{
    constexpr int kOfShell = 128; // plus the signal
    const bool crashed = iverilog.exitStatus() == QProcess::CrashExit;
    for (const Signal& signal : kSignals) {
        if (crashed ? iverilog.exitCode() == signal.number
                    : iverilog.exitCode() == kOfShell + signal.number
                    && words.contains(signal.shellSays))
            return &signal;
    }
    return nullptr;
}

/// The error of a failed compilation; `log` is the compiler's.
QString compilerFailure(const QProcess& iverilog, const QString& log)
{
    const QString words = firstLines(log);
    const Signal* signal = endingSignal(iverilog, words);
    if (!signal)
        return "iverilog does not accept the Verilog:\n" + words;
    return QString(
        "iverilog was ended by signal %1 (%2); Icarus 11 crashes at packed structures and"
        " enumerations of a package; simulate such a design with Verilator, or write it in"
        " Verilog-2005\n%3")
        .arg(QString::number(signal->number), signal->shellSays, words)
        .trimmed();
}

}

SimulatedTarget::SimulatedTarget()
    : m_patience(new ProcessPatience)
{
}

SimulatedTarget::~SimulatedTarget()
{
    if (m_vvp.state() == QProcess::NotRunning)
        return;
    m_vvp.kill();
    m_vvp.waitForFinished(-1);
}

bool SimulatedTarget::fail(const QString& error)
{
    m_error = error;
    return false;
}

void SimulatedTarget::setGoesOn(const std::function<bool()>& goesOn)
{
    m_goesOn = goesOn;
    m_control.setGoesOn(goesOn);
    m_jtag.setGoesOn(goesOn);
}

bool SimulatedTarget::build(
    const Design& design, const StimulusPorts& ports, const std::function<bool()>& goesOn)
{
    m_workDir = absolute(design.workDir);
    m_plugin = design.dirs.plugin;
    // Verilog suppresses unknown values where gates do not.
    m_settle = design.netlist.isEmpty() ? QStringList() : QStringList {"+oxa_settle=1"};
    const QString bench = m_workDir + "/testbench.v";
    QStringList sources;
    if (!generate(design, sources))
        return false;
    if (!OXA_FILES::writeFile(bench, testbench(ports), &m_error))
        return false;
    return compile(QStringList {"-g2005", "-s", "oxa_testbench", "-o", m_workDir + "/target.vvp",
                       "-y", design.dirs.models}
            + sources + QStringList {bench},
        goesOn);
}

bool SimulatedTarget::generate(const Design& design, QStringList& sources)
{
    OXA::OxaPrepare prepared;
    if (prepared.prepare(design.arg) != 1 || !OXA::writeNameSums(design.arg.workDir, design.names))
        return fail("the Verilog could not be generated");
    if (!design.netlist.isEmpty()) {
        sources = QStringList {"-y", design.dirs.cells, absolute(design.netlist)};
        return true;
    }
    for (const QString& path : qAsConst(prepared.includePaths))
        sources += "-I" + absolute(path);
    for (const QString& path : qAsConst(prepared.files))
        sources += absolute(path);
    return true;
}

bool SimulatedTarget::compile(const QStringList& arguments, const std::function<bool()>& goesOn)
{
    for (const QString& argument : arguments) {
        if (argument.contains('"') || OXA::shownText(argument) != argument)
            return fail(OXA::shownText(argument)
                + ": contains a double quote or a character that does not print, where Icarus ends "
                  "a path; choose another directory or file");
    }
    QProcess iverilog;
    const QString log = m_workDir + "/iverilog.log";
    iverilog.setProcessChannelMode(QProcess::MergedChannels);
    iverilog.setStandardOutputFile(log);
    // When it is ended, it leaves its temporary files; it passes their directory to a shell.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"TMP", "TMPDIR", "TEMP"})
        environment.insert(name, ".");
    iverilog.setProcessEnvironment(environment);
    iverilog.setWorkingDirectory(m_workDir);
    iverilog.start("iverilog", arguments);
    if (!iverilog.waitForStarted(-1))
        return fail("iverilog does not start (package iverilog): " + iverilog.errorString());
    while (!iverilog.waitForFinished(kCompilePoll)) {
        if (goesOn())
            continue;
        iverilog.kill();
        iverilog.waitForFinished(-1);
        return fail({});
    }
    return (iverilog.exitStatus() == QProcess::NormalExit && iverilog.exitCode() == 0)
        || fail(compilerFailure(iverilog, log));
}

bool SimulatedTarget::run(const QString& stimulus, const QString& jtag)
{
    m_vvp.setProcessChannelMode(QProcess::MergedChannels);
    m_vvp.setStandardOutputFile(m_workDir + "/vvp.log");
    m_vvp.start("vvp",
        QStringList {"-n", "-M", m_plugin, "-m", "oxa_target", m_workDir + "/target.vvp",
            "+oxa_jtag=" + jtag, "+oxa_control=unix:" + m_sockets.filePath("control"),
            "+oxa_stimulus=" + stimulus}
            + m_settle);
    if (!m_vvp.waitForStarted(-1))
        return fail("vvp does not start (package iverilog): " + m_vvp.errorString());
    const auto mayAnswer = [this](int looks) { return this->mayAnswer(looks); };
    m_control.setPatience(mayAnswer);
    m_jtag.setPatience(mayAnswer);
    return connectTo("control", [this](const QString& at) { return m_control.connectTo(at); });
}

bool SimulatedTarget::start(const QString& stimulus)
{
    return run(stimulus, "unix:" + m_sockets.filePath("jtag"))
        && connectTo("jtag", [this](const QString& at) { return m_jtag.connectTo(at); });
}

bool SimulatedTarget::serve(const QString& stimulus, int port)
{
    // It prints its port when it is ready for commands.
    if (!run(stimulus, QString("tcp:%1").arg(port)) || !rewind())
        return false;
    static const QRegularExpression listens("at port (\\d+)");
    m_port = listens.match(lastWords()).captured(1).toInt();
    return m_port > 0 || fail("the simulator does not print its port: " + lastWords());
}

bool SimulatedTarget::connectTo(
    const QString& name, const std::function<bool(const QString&)>& connect)
{
    m_patience->begin(m_vvp.processId());
    while (!connect("unix:" + m_sockets.filePath(name))) {
        if (m_vvp.waitForFinished(10) || !m_patience->lasts() || (m_goesOn && !m_goesOn()))
            return fail("the simulator does not run: " + lastWords());
    }
    return true;
}

// Called while the simulator does not respond, `looks` times in a row.
bool SimulatedTarget::mayAnswer(int looks)
{
    if (looks == 1)
        m_patience->begin(m_vvp.processId());
    return m_patience->lasts();
}

bool SimulatedTarget::order(const QByteArray& line, QByteArray& answer)
{
    const auto isWhole = [](const QByteArray& so) { return so.endsWith('\n'); };
    if (!m_control.exchange(line + '\n', isWhole, answer, {kLook, kLook, kMostAnswer}))
        return fail("the simulator stopped: " + m_control.error() + lastWords());
    answer.chop(1);
    return true;
}

bool SimulatedTarget::play(qint64 steps)
{
    QByteArray answer;
    const QByteArray count = QByteArray::number(steps);
    return order("run " + count, answer)
        && (answer == "ran " + count
            || fail("the simulator did not play the waveform: " + QString(answer)));
}

bool SimulatedTarget::rewind()
{
    QByteArray answer;
    return order("rewind", answer)
        && (answer == "rewound" || fail("the simulator does not rewind: " + QString(answer)));
}

bool SimulatedTarget::look(const QStringList& names, std::vector<Level>& levels)
{
    QByteArray answer;
    if (!order("look " + names.join(' ').toUtf8(), answer))
        return false;
    if (!answer.startsWith("saw ") || answer.size() != 4 + names.size())
        return fail("the simulator does not read the nets: " + QString(answer));
    levels.clear();
    for (const char level : answer.mid(4))
        levels.push_back(level == '2' ? HighAgain : level == '1' ? High : Low);
    return true;
}

QString SimulatedTarget::lastWords()
{
    QFile log(m_workDir + "/vvp.log");
    return log.open(QIODevice::ReadOnly)
        ? QString::fromLocal8Bit(log.readAll().right(500)).trimmed()
        : QString();
}

}
