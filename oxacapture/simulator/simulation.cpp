// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/simulation.h"

#include "files/fail.h"
#include "oxacapture/simulator/stimulus.h"
#include "oxacapture/simulator/target_capture.h"
#include "oxacapture/simulator/target_player.h"
#include "oxacapture/simulator/verilator.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <limits>

namespace OXA_CAPTURE {

namespace {

/// The configuration as it is simulated, and the wrapper's ports.
struct Preparation {
    StimulusPorts ports;
    QHash<QString, QString> clockNames; ///< new names of sample clocks that are also watched
};

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

Preparation prepare(const std::vector<CorePlan>& cores, const QList<OXA::AOCore_Lite*>& liteCores,
    const SampledWaveform& waveform)
{
    Preparation preparation;
    StimulusPorts& ports = preparation.ports;
    ports.clocks = waveform.clocks;
    separateClocks(cores, preparation);
    for (const CorePlan& core : cores) {
        for (const QStringList& field : core.request.fields)
            addPorts(ports.values, ports.clocks, field);
    }
    // The wrapper has the signals of all Lite cores, but contains only the first core.
    for (const OXA::AOCore_Lite* core : liteCores)
        addPorts(ports.values, ports.clocks, core->dataSignals() + QStringList(core->sampleClock));
    ports.values.removeDuplicates();
    return preparation;
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

/// Decides which simulator is used to play `steps` steps.
bool chooseSimulator(const Simulation& simulation, qint64 steps, bool& verilated, QString* error)
{
    const bool isNetlist = !simulation.netlist.isEmpty();
    if (isNetlist && simulation.simulator == Simulator::Verilator)
        return OXA::fail(error,
            "Verilator has no unknown values, which a netlist needs; simulate it with Icarus");
    verilated = simulation.simulator == Simulator::Verilator
        || (simulation.simulator == Simulator::Auto && !isNetlist && steps >= kVerilatorPays
            && hasVerilator());
    return true;
}

bool buildVerilated(const Simulation& simulation, const SimulatedTarget::Design& design,
    const StimulusPorts& ports, const std::vector<CorePlan>& cores,
    const std::vector<quint32>& clocksBefore, SimulatedTarget& target, QString* error)
{
    const QStringList looked = playerNets(cores);
    const auto goesOn
        = [&simulation] { return simulation.progress("compiling with Verilator", 0); };
    return target.buildVerilated(design, verilatedTestbench(ports, looked),
               verilatedFrame(looked, clocksBefore), goesOn)
        || OXA::fail(error, target.error());
}

bool build(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const Preparation& preparation, const Stimulus& stimulus, bool verilated,
    SimulatedTarget& target, QString* error)
{
    SimulatedTarget::Design design(simulation.dirs, simulation.arg, simulation.workDir, cores);
    design.netlist = simulation.netlist;
    design.overUart = simulation.overUart;
    if (!preparation.clockNames.isEmpty() && !simulation.netlist.isEmpty())
        return OXA::fail(error,
            "cannot simulate a netlist whose cores watch their sample clocks ("
                + QStringList(preparation.clockNames.keys()).join(", ") + ')');
    if (!preparation.clockNames.isEmpty())
        design.arg.configFile = renamedConfiguration(simulation, preparation.clockNames);
    QString why;
    if (verilated
        && buildVerilated(
            simulation, design, preparation.ports, cores, stimulus.clocksBefore(), target, &why))
        return true;
    if (verilated && (why.isEmpty() || simulation.simulator == Simulator::Verilator))
        return OXA::fail(error, why);
    if (verilated)
        simulation.warn("simulated with Icarus, because Verilator cannot be used: " + why);
    const auto goesOn = [&simulation] { return simulation.progress("compiling", 0); };
    return target.build(design, testbench(preparation.ports), goesOn)
        || OXA::fail(error, target.error());
}

/// Builds a target, of whose steps about `toPlay` will be played.
bool buildTarget(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, int leadIn, qint64 toPlay, SimulatedTarget& target,
    qint64& steps, QString* error)
{
    const QList<OXA::AOCore_Lite*> liteCores = liteCoresOf(simulation.arg.configFile);
    const Preparation preparation = prepare(cores, liteCores, waveform);
    qDeleteAll(liteCores);
    auto stimulus
        = std::make_unique<Stimulus>(preparation.ports, leadIn, kLeadOut, waveform, cores);
    steps = stimulus->steps();
    bool verilated = false;
    if (!chooseSimulator(simulation, std::min(steps, toPlay), verilated, error)
        || !simulation.progress("generating", 0)
        || !build(simulation, cores, preparation, *stimulus, verilated, target, error))
        return false;
    target.setStimulus(std::move(stimulus));
    return true;
}

// Clock periods until those cores are at rest that run from power-up on with other settings than
// those of the run.
int periodsInFront(const Simulation& simulation, const std::vector<CorePlan>& cores)
{
    const bool all = !simulation.built.empty();
    const bool any = std::any_of(cores.begin(), cores.end(), [all](const CorePlan& core) {
        return core.core && core.core->captureInitDataEnabled
            && (all || core.powerUpPosition != core.setup.triggerPos);
    });
    return any ? kLeadIn : 0;
}

// Steps of the waveform after which every core has finished, by the trigger model; any number when
// one of them does not.
qint64 expectedSteps(const std::vector<CorePlan>& cores, const SampledWaveform& waveform,
    const std::vector<ModelRun>& runs)
{
    qint64 steps = 0;
    for (size_t core = 0; core < cores.size(); ++core) {
        if (runs[core].windows.empty())
            return std::numeric_limits<qint64>::max();
        const Window& last = runs[core].windows.back();
        const qint64 step
            = stepOfSample(waveform, cores[core].request, last.firstSample + last.samples - 1);
        steps = std::max(steps, step + 1 + qint64(2) * kLeadOut);
    }
    return steps;
}

const std::vector<CorePlan>& builtCores(
    const Simulation& simulation, const std::vector<CorePlan>& cores)
{
    return simulation.built.empty() ? cores : simulation.built;
}

bool capture(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, qint64 steps, qint64 expected, SimulatedTarget& target,
    std::vector<ModelRun>& runs, QString* error)
{
    TargetCapture client(target, builtCores(simulation, cores), cores, waveform);
    PlayedSteps played;
    played.leadIn = qint64(2) * periodsInFront(simulation, cores);
    played.leadOut = qint64(2) * kLeadOut;
    played.waveform = steps - played.leadIn - played.leadOut;
    played.expected = std::min(expected, played.waveform);
    const auto progress
        = [&simulation](int percent) { return simulation.progress("simulating", percent); };
    bool ok = client.begin(simulation.workDir + "/generated");
    if (ok && !client.namesWarning().isEmpty())
        simulation.warn(client.namesWarning());
    ok = ok && client.run(played, simulation.forceAt, progress);
    for (size_t core = 0; ok && core < cores.size(); ++core) {
        const std::vector<Window> expected = runs[core].windows;
        ok = simulation.progress("reading out", int(100 * core / cores.size()))
            && client.read(core, expected, runs[core]);
    }
    return ok || OXA::fail(error, client.error());
}

}

bool buildTarget(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, int leadIn, SimulatedTarget& target, qint64& steps,
    QString* error)
{
    return buildTarget(simulation, cores, waveform, leadIn, std::numeric_limits<qint64>::max(),
        target, steps, error);
}

bool simulate(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, std::vector<ModelRun>& runs, QString* error)
{
    SimulatedTarget target;
    target.setGoesOn(simulation.goesOn);
    qint64 steps = 0;
    const qint64 expected = expectedSteps(cores, waveform, runs);
    if (!buildTarget(simulation, builtCores(simulation, cores), waveform,
            periodsInFront(simulation, cores), expected, target, steps, error))
        return false;
    if (!target.start())
        return OXA::fail(error, target.error());
    return capture(simulation, cores, waveform, steps, expected, target, runs, error);
}

}
