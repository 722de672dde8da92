// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/bench_simulation.h"

#include "files/fail.h"
#include "oxacapture/simulator/icarus.h"
#include "oxacapture/simulator/stimulus.h"
#include "oxautils/design/attach.h"
#include "oxautils/model/shown_text.h"

#include <QDir>
#include <QProcess>

namespace OXA_CAPTURE {

namespace {

QStringList absolute(const QStringList& paths)
{
    QStringList all;
    for (const QString& path : paths)
        all += QFileInfo(path).absoluteFilePath();
    return all;
}

bool isSystemVerilog(const QString& path)
{
    return path.endsWith(".sv", Qt::CaseInsensitive) || path.endsWith(".svh", Qt::CaseInsensitive);
}

/// The module at the top of a path.
QString rootOf(const QString& path)
{
    return path.startsWith('\\') ? path.mid(1).section(' ', 0, 0) : path.section('.', 0, 0);
}

OXA::AttachRequest requestOf(const BenchSimulation& simulation)
{
    OXA::AttachRequest request;
    request.sources = simulation.sources;
    request.names = simulation.names;
    request.pads.clear(); // the design needs none
    return request;
}

class Builder {
public:
    explicit Builder(const BenchSimulation& simulation)
        : m_simulation(simulation)
        , m_attachment(requestOf(simulation), simulation.hooks)
    {
    }

    bool build(const std::vector<CorePlan>& cores, SimulatedTarget& target, QString* error)
    {
        if (!m_attachment.read(error))
            return false;
        for (const QString& warning : m_attachment.warnings())
            m_simulation.warn(warning);
        QString instance;
        if (!compileDesign(error) || !findInstance(instance, error))
            return false;
        SimulatedTarget::Design design(
            m_simulation.dirs, m_simulation.arg, m_simulation.workDir, cores);
        design.bench = arguments() + QStringList {"-s", rootOf(instance)};
        const QByteArray analyzer = m_attachment.besideDesign(instance, m_isFlat);
        return target.build(design, testbench(analyzer), [this] { return goesOn("compiling"); })
            || OXA::fail(error, target.error());
    }

private:
    bool goesOn(const QString& stage) const
    {
        m_simulation.hooks.progress(stage, 0);
        return !m_simulation.hooks.stopAsked();
    }

    /// What Icarus gets of the design and its bench.
    QStringList arguments() const
    {
        const OXA::DesignSources& sources = m_simulation.sources;
        const QStringList files = sources.files + m_simulation.bench;
        QStringList arguments {"-grelative-include", "-I" + QDir::currentPath()};
        if (std::any_of(files.begin(), files.end(), isSystemVerilog))
            arguments += "-g2012";
        for (const QString& directory : absolute(sources.includeDirs))
            arguments += "-I" + directory;
        for (const QString& define : sources.defines)
            arguments += "-D" + define;
        return arguments + (m_isFlat ? QStringList(flatDesign()) : absolute(sources.files))
            + absolute(m_simulation.bench);
    }

    /// Compiles the design with its bench alone, as it is or else as Yosys writes it.
    bool compileDesign(QString* error)
    {
        QString why;
        QString whyFlat;
        if (compile(&why))
            return true;
        if (why.isEmpty())
            return OXA::fail(error, {});
        if (!m_attachment.writeDesign(flatDesign(), error))
            return false;
        m_isFlat = true;
        if (compile(&whyFlat)) {
            m_simulation.warn("the design is simulated as plain Verilog from Yosys: registers "
                              "without initial value start at 0, and the bench cannot refer to "
                              "nets in it. The reason: "
                + why);
            return true;
        }
        return OXA::fail(error,
            whyFlat.isEmpty() ? QString() : why + "\nAs plain Verilog from Yosys: " + whyFlat);
    }

    bool compile(QString* why) const
    {
        const auto goesOn = [this] { return this->goesOn("compiling the design"); };
        return compileVerilog(
            arguments() + QStringList {"-o", compiled()}, m_simulation.workDir, goesOn, why);
    }

    /// Where in its bench the top of the design is.
    bool findInstance(QString& instance, QString* error)
    {
        const QString& top = m_attachment.design().top;
        QProcess vvp;
        vvp.start("vvp",
            {"-n", "-M", m_simulation.dirs.plugin, "-m", "oxa_target", compiled(),
                "+oxa_find=" + top});
        if (!vvp.waitForStarted(-1))
            return OXA::fail(error, "vvp does not start (package iverilog): " + vvp.errorString());
        if (!finishes(vvp, [this] { return goesOn("looking for the design"); }))
            return OXA::fail(error, {});
        QStringList found;
        const QByteArray mark = "oxa_target: instance ";
        for (const QByteArray& line : vvp.readAllStandardOutput().split('\n')) {
            if (line.startsWith(mark))
                found += QString::fromUtf8(line.mid(mark.size()));
        }
        instance = found.value(0);
        if (found.size() > 1)
            return OXA::fail(error,
                QString("the bench has several instances of the top \"%1\": %2; the analyzer can "
                        "watch one")
                    .arg(OXA::shownText(top), OXA::shownText(found.join(", "))));
        return (!found.isEmpty() && rootOf(instance) != top)
            || OXA::fail(error,
                QString("the bench has no instance of the top \"%1\" of the design")
                    .arg(OXA::shownText(top)));
    }

    QString compiled() const { return m_simulation.workDir + "/bench.vvp"; }
    QString flatDesign() const { return m_simulation.workDir + "/design.v"; }

    const BenchSimulation& m_simulation;
    OXA::Attachment m_attachment;
    bool m_isFlat = false;
};

}

bool buildTarget(const BenchSimulation& simulation, const std::vector<CorePlan>& cores,
    SimulatedTarget& target, QString* error)
{
    return Builder(simulation).build(cores, target, error);
}

}
