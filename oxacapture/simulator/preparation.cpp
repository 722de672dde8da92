// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/preparation.h"

#include "files/fail.h"
#include "oxacapture/simulator/target_player.h"
#include "oxacapture/simulator/verilator.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"

#include <QFileInfo>
#include <QSet>

namespace OXA_CAPTURE {

namespace {

QSet<QString> watchedNames(const std::vector<CorePlan>& cores)
{
    QSet<QString> names;
    for (const CorePlan& core : cores) {
        for (const QStringList& field : core.request.fields)
            names += QSet<QString>(field.begin(), field.end());
    }
    return names;
}

// A watched sample clock has two values at its own edge: the old one in the sample, the new one
// that takes it. So the clock gets a separate port.
void separateClocks(const std::vector<CorePlan>& cores, Preparation& preparation)
{
    const QSet<QString> watched = watchedNames(cores);
    for (QString& clock : preparation.ports.clocks) {
        if (!watched.contains(clock))
            continue;
        QString name = clock + "$clock";
        while (watched.contains(name) || preparation.ports.clocks.contains(name))
            name += '$';
        preparation.clockNames.insert(clock, name);
        clock = name;
    }
}

void addPorts(QStringList& values, const QStringList& clocks, const QStringList& names)
{
    for (const QString& name : names) {
        if (!clocks.contains(name))
            values += name;
    }
}

template <typename Core>
void renameClocks(const QList<Core*>& cores, const QHash<QString, QString>& names)
{
    for (Core* core : cores)
        core->sampleClock = names.value(core->sampleClock, core->sampleClock);
}

// Writes the configuration with renamed clocks; returns its path.
QString renamedConfiguration(const Simulation& simulation, const QHash<QString, QString>& names)
{
    const QString& original = simulation.arg.configFile;
    QString path = simulation.workDir + '/' + QFileInfo(original).fileName();
    if (OXA::oxaModeFromOxaConfigFile(original) == OXA::Lite) {
        const QList<OXA::AOCore_Lite*> cores = OXA::readOXAConfigFromXml_Lite(original);
        renameClocks(cores, names);
        OXA::writeOXAConfigToXml_Lite(cores, path);
        qDeleteAll(cores);
    } else {
        const QList<OXA::AoCore*> cores = OXA::readOXAConfigFromXml(original);
        renameClocks(cores, names);
        OXA::writeOXAConfigToXml(cores, path);
        qDeleteAll(cores);
    }
    return path;
}

QList<OXA::AOCore_Lite*> liteCoresOf(const QString& configFile)
{
    return OXA::oxaModeFromOxaConfigFile(configFile) == OXA::Lite
        ? OXA::readOXAConfigFromXml_Lite(configFile)
        : QList<OXA::AOCore_Lite*>();
}

}

bool takesVerilator(const Simulation& simulation, qint64 steps)
{
    return simulation.netlist.isEmpty()
        && (simulation.simulator == Simulator::Verilator
            || (simulation.simulator == Simulator::Auto && steps >= kVerilatorPays
                && hasVerilator()));
}

Preparation prepare(const Simulation& simulation, const std::vector<CorePlan>& cores)
{
    Preparation preparation;
    StimulusPorts& ports = preparation.ports;
    for (const CorePlan& core : cores)
        ports.clocks += core.request.clock;
    ports.clocks.removeDuplicates();
    separateClocks(cores, preparation);
    for (const CorePlan& core : cores) {
        for (const QStringList& field : core.request.fields)
            addPorts(ports.values, ports.clocks, field);
    }
    // The wrapper has the signals of all Lite cores, but contains only the first core.
    const QList<OXA::AOCore_Lite*> liteCores = liteCoresOf(simulation.arg.configFile);
    for (const OXA::AOCore_Lite* core : liteCores)
        addPorts(ports.values, ports.clocks, core->dataSignals() + QStringList(core->sampleClock));
    qDeleteAll(liteCores);
    ports.values.removeDuplicates();
    return preparation;
}

std::optional<SimulatedTarget::Design> designOf(const Simulation& simulation,
    const std::vector<CorePlan>& cores, const Preparation& preparation, QString* error)
{
    SimulatedTarget::Design design(simulation.dirs, simulation.arg, simulation.workDir, cores);
    design.netlist = simulation.netlist;
    design.overUart = simulation.overUart;
    if (preparation.clockNames.isEmpty())
        return design;
    if (!simulation.netlist.isEmpty()) {
        OXA::fail(error,
            "cannot simulate a netlist whose cores watch their sample clocks ("
                + QStringList(preparation.clockNames.keys()).join(", ") + ')');
        return std::nullopt;
    }
    design.arg.configFile = renamedConfiguration(simulation, preparation.clockNames);
    return design;
}

bool buildVerilated(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const Preparation& preparation, SimulatedTarget& target, const std::function<bool()>& goesOn,
    QString* error)
{
    const QStringList looked = playerNets(cores);
    const auto design = designOf(simulation, cores, preparation, error);
    return design
        && (target.buildVerilated(*design, verilatedTestbench(preparation.ports, looked),
                verilatedFrame(looked), goesOn)
            || OXA::fail(error, target.error()));
}

}
