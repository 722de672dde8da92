// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/simulated_target.h"

#include "files/replace_file.h"
#include "oxacapture/simulator/icarus.h"
#include "oxacapture/simulator/process_patience.h"
#include "oxacapture/simulator/serial_pads.h"
#include "oxacapture/simulator/stimulus.h"
#include "oxacapture/simulator/verilator.h"
#include "oxacapture/trigger/core_plan.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/uart_defines.h"

#include <QDir>
#include <QRegularExpression>
#include <QThread>

namespace OXA_CAPTURE {

namespace {

constexpr int kLook = 5000; // ms between checks of a simulator without output
constexpr qint64 kMostAnswer = 1 << 20; // bytes

QString absolute(const QString& path) { return QFileInfo(path).absoluteFilePath(); }

}

SimulatedTarget::Design::Design(const SimulatorDirs& dirs, const OXA::OxaArg& arg,
    const QString& workDir, const std::vector<CorePlan>& cores)
    : dirs(dirs)
    , arg(arg)
    , workDir(workDir)
{
    this->arg.workDir = workDir + "/generated";
    for (const CorePlan& core : cores)
        names += core.core ? OXA::nameSums(*core.core) : OXA::nameSums(*core.lite);
}

SimulatedTarget::SimulatedTarget()
    : m_patience(new ProcessPatience)
    , m_serial(new SerialPads)
{
}

SimulatedTarget::~SimulatedTarget()
{
    m_servesSerial = false;
    if (m_serialThread.joinable())
        m_serialThread.join();
    if (m_simulator.state() == QProcess::NotRunning)
        return;
    m_simulator.kill();
    m_simulator.waitForFinished(-1);
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
    const Design& design, const QByteArray& testbench, const std::function<bool()>& goesOn)
{
    m_isVerilated = false;
    m_hasBench = !design.bench.isEmpty();
    // Verilog suppresses unknown values where gates do not.
    if (!design.netlist.isEmpty())
        m_options += "+oxa_settle=1";
    if (m_hasBench)
        m_options += "+oxa_bench=1";
    QStringList sources;
    return generate(design, testbench, sources)
        && compileVerilog(QStringList {"-g2005", "-s", "oxa_testbench", "-o",
                              m_workDir + "/target.vvp", "-y", design.dirs.models}
                + sources + design.bench,
            m_workDir, goesOn, &m_error);
}

bool SimulatedTarget::buildVerilated(const Design& design, const QByteArray& testbench,
    const QByteArray& frame, const std::function<bool()>& goesOn)
{
    m_isVerilated = true;
    QStringList sources;
    return generate(design, testbench, sources)
        && compileVerilated(
            QStringList {"-y", design.dirs.models} + sources, frame, m_workDir, goesOn, &m_error);
}

bool SimulatedTarget::generate(
    const Design& design, const QByteArray& testbench, QStringList& sources)
{
    m_workDir = absolute(design.workDir);
    m_plugin = design.dirs.plugin;
    const QString bench = m_workDir + "/testbench.v";
    OXA::OxaPrepare prepared;
    if (prepared.prepare(design.arg) != 1 || !OXA::writeNameSums(design.arg.workDir, design.names))
        return fail("the Verilog could not be generated");
    if (!OXA_FILES::writeFile(bench, testbench, &m_error)
        || (design.overUart
            && !OXA::writeUartDefines(
                design.arg.workDir, {SerialPads::kClockHz, SerialPads::kBaud}, &m_error)))
        return false;
    if (!design.netlist.isEmpty()) {
        sources = QStringList {"-y", design.dirs.cells, absolute(design.netlist), bench};
        return true;
    }
    for (const QString& path : qAsConst(prepared.includePaths))
        sources += "-I" + absolute(path);
    if (design.overUart) {
        for (const char* file : {"/QX_JTAG.v", "/uart_bridge.v"})
            sources += design.dirs.uart + file;
    }
    for (const QString& path : qAsConst(prepared.files))
        sources += absolute(path);
    sources += bench;
    return true;
}

void SimulatedTarget::setStimulus(std::unique_ptr<Stimulus> stimulus)
{
    m_stimulus = std::move(stimulus);
    if (m_isVerilated)
        m_options += "+oxa_clocks=" + m_stimulus->clocksBefore();
}

bool SimulatedTarget::run(const QString& jtag)
{
    const QString program = m_isVerilated ? m_plugin + "/oxa_verilated" : "vvp";
    const QStringList design = m_isVerilated
        ? QStringList(m_workDir + "/design.so")
        : QStringList {"-n", "-M", m_plugin, "-m", "oxa_target", m_workDir + "/target.vvp"};
    m_simulator.setProcessChannelMode(QProcess::MergedChannels);
    m_simulator.setStandardOutputFile(log());
    m_simulator.start(program,
        design
            + QStringList {"+oxa_jtag=" + jtag,
                "+oxa_control=unix:" + m_sockets.filePath("control")}
            + m_options);
    if (!m_simulator.waitForStarted(-1))
        return fail(program + " does not start" + (m_isVerilated ? ": " : " (package iverilog): ")
            + m_simulator.errorString());
    const auto mayAnswer = [this](int looks) { return this->mayAnswer(looks); };
    m_control.setPatience(mayAnswer);
    m_jtag.setPatience(mayAnswer);
    return connectTo("control", [this](const QString& at) { return m_control.connectTo(at); });
}

bool SimulatedTarget::start()
{
    return run("unix:" + m_sockets.filePath("jtag"))
        && connectTo("jtag", [this](const QString& at) { return m_jtag.connectTo(at); });
}

bool SimulatedTarget::serve(int port)
{
    // It prints its port when it is ready for commands.
    if (!run(QString("tcp:%1").arg(port)) || !play(0))
        return false;
    static const QRegularExpression listens("at port (\\d+)");
    m_port = listens.match(lastWords()).captured(1).toInt();
    return m_port > 0 || fail("the simulator does not print its port: " + lastWords());
}

bool SimulatedTarget::serveSerial()
{
    if (!run("unix:" + m_sockets.filePath("jtag"))
        || !connectTo("jtag", [this](const QString& at) { return m_serial->open(at); }))
        return false;
    m_servesSerial = true;
    // When it fails, the simulator has ended, which the other socket's user sees.
    m_serialThread = std::thread([this] {
        while (m_servesSerial && m_serial->step())
            continue;
    });
    return true;
}

QString SimulatedTarget::serialDevice() const { return m_serial->device(); }

bool SimulatedTarget::connectTo(
    const QString& name, const std::function<bool(const QString&)>& connect)
{
    m_patience->begin(m_simulator.processId());
    while (!connect("unix:" + m_sockets.filePath(name))) {
        if (m_simulator.waitForFinished(10) || !m_patience->lasts() || (m_goesOn && !m_goesOn()))
            return fail("the simulator does not run: " + lastWords());
    }
    return true;
}

// Called while the simulator does not respond, `looks` times in a row.
bool SimulatedTarget::mayAnswer(int looks)
{
    if (looks == 1)
        m_patience->begin(m_simulator.processId());
    return m_patience->lasts();
}

bool SimulatedTarget::order(const QByteArray& bytes, QByteArray& answer)
{
    const auto isWhole = [](const QByteArray& so) { return so.endsWith('\n'); };
    if (!m_control.exchange(bytes, isWhole, answer, {kLook, kLook, kMostAnswer}))
        return fail("the simulator stopped: " + m_control.error() + lastWords());
    answer.chop(1);
    return true;
}

bool SimulatedTarget::play(qint64 steps)
{
    QByteArray answer;
    const QByteArray count = QByteArray::number(steps);
    if (m_hasBench)
        return order("run " + count + '\n', answer)
            && (answer.startsWith("ran ") || fail("the simulator did not run: " + QString(answer)));
    const QByteArray bytes = m_stimulus->next(steps);
    return order("play " + count + ' ' + QByteArray::number(bytes.size()) + '\n' + bytes, answer)
        && (answer == "ran " + count
            || fail("the simulator did not play the waveform: " + QString(answer)));
}

void SimulatedTarget::rewind()
{
    if (m_stimulus)
        m_stimulus->rewind();
}

bool SimulatedTarget::look(const QStringList& names, std::vector<Level>& levels)
{
    QByteArray answer;
    if (!order("look " + names.join(' ').toUtf8() + '\n', answer))
        return false;
    if (!answer.startsWith("saw ") || answer.size() != 4 + names.size())
        return fail("the simulator does not read the nets: " + QString(answer));
    levels.clear();
    for (const char level : answer.mid(4))
        levels.push_back(level == '2' ? HighAgain : level == '1' ? High : Low);
    return true;
}

QString SimulatedTarget::log() const
{
    return m_workDir + (m_isVerilated ? "/verilated.log" : "/vvp.log");
}

QString SimulatedTarget::printed()
{
    QFile log(this->log());
    if (!log.open(QIODevice::ReadOnly) || !log.seek(m_printed))
        return {};
    const QByteArray text = log.readAll();
    const QByteArray lines = text.left(text.lastIndexOf('\n') + 1);
    m_printed += lines.size();
    static const QRegularExpression port(
        "^oxa_target: remote_bitbang.*\n", QRegularExpression::MultilineOption);
    return QString::fromLocal8Bit(lines).remove(port);
}

QString SimulatedTarget::lastWords()
{
    QFile log(this->log());
    return log.open(QIODevice::ReadOnly)
        ? QString::fromLocal8Bit(log.readAll().right(500)).trimmed()
        : QString();
}

}
