// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/simulation.h"

#include "files/fail.h"
#include "oxacapture/simulator/stimulus_file.h"
#include "oxacapture/simulator/target_capture.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

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

bool build(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const Preparation& preparation, SimulatedTarget& target, QString* error)
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
    const auto goesOn = [&simulation] { return simulation.progress("compiling", 0); };
    return target.build(design, testbench(preparation.ports), goesOn)
        || OXA::fail(error, target.error());
}

// Clock periods until those cores are at rest that run from power-up on with another trigger
// position than the configuration's.
int periodsInFront(const std::vector<CorePlan>& cores)
{
    const bool any = std::any_of(cores.begin(), cores.end(), [](const CorePlan& core) {
        return core.core && core.core->captureInitDataEnabled
            && core.powerUpPosition != core.setup.triggerPos;
    });
    return any ? kLeadIn : 0;
}

bool capture(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, qint64 steps, SimulatedTarget& target,
    std::vector<ModelRun>& runs, QString* error)
{
    TargetCapture client(target, cores, waveform);
    const qint64 leadIn = qint64(2) * periodsInFront(cores);
    const qint64 leadOut = qint64(2) * kLeadOut;
    const auto progress
        = [&simulation](int percent) { return simulation.progress("simulating", percent); };
    bool ok = client.begin(simulation.workDir + "/generated");
    if (ok && !client.namesWarning().isEmpty())
        simulation.warn(client.namesWarning());
    ok = ok && client.run(leadIn, steps - leadIn - leadOut, leadOut, simulation.forceAt, progress);
    for (size_t core = 0; ok && core < cores.size(); ++core) {
        const std::vector<Window> expected = runs[core].windows;
        ok = simulation.progress("reading out", int(100 * core / cores.size()))
            && client.read(core, expected, runs[core]);
    }
    return ok || OXA::fail(error, client.error());
}

}

bool buildTarget(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, int leadIn, SimulatedTarget& target, const QString& stimulus,
    qint64& steps, QString* error)
{
    const QList<OXA::AOCore_Lite*> liteCores = liteCoresOf(simulation.arg.configFile);
    const Preparation preparation = prepare(cores, liteCores, waveform);
    qDeleteAll(liteCores);

    std::vector<SampleRequest> requests;
    requests.reserve(cores.size());
    for (const CorePlan& core : cores)
        requests.push_back(core.request);
    if (!simulation.progress("generating", 0)
        || !build(simulation, cores, preparation, target, error))
        return false;
    steps = writeStimulus(stimulus, preparation.ports, leadIn, kLeadOut, waveform, requests, error);
    return steps >= 0;
}

bool simulate(const Simulation& simulation, const std::vector<CorePlan>& cores,
    const SampledWaveform& waveform, std::vector<ModelRun>& runs, QString* error)
{
    SimulatedTarget target;
    target.setGoesOn(simulation.goesOn);
    const QString stimulus = simulation.workDir + "/stimulus.txt";
    qint64 steps = 0;
    if (!buildTarget(
            simulation, cores, waveform, periodsInFront(cores), target, stimulus, steps, error))
        return false;
    if (!target.start(stimulus))
        return OXA::fail(error, target.error());
    return capture(simulation, cores, waveform, steps, target, runs, error);
}

}
