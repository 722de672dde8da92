// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/built_configuration.h"

#include "files/fail.h"
#include "oxautils/generate/fingerprint.h"
#include "oxautils/generate/lite_files.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/model/limits.h"

#include <dev/device_db.h>

#include <QSet>
#include <QTemporaryDir>

namespace OXA_CAPTURE {

namespace {

OXA::OxaArg argOf(const QString& configFile, const DEV::ChipInfo& chip)
{
    OXA::OxaArg arg;
    arg.configFile = configFile;
    arg.device = chip.partNumber;
    arg.package = chip.name;
    return arg;
}

bool fingerprintsOf(OXA::OxaArg arg, const QList<OXA::AoCore*>& cores,
    const QList<OXA::AOCore_Lite*>& liteCores, BuiltConfiguration& built, QString* error)
{
    const QTemporaryDir directory;
    arg.workDir = directory.path();
    const bool written = cores.isEmpty() ? OXA::lite_generateFilesForAoCore(arg, liteCores)
                                         : OXA::std_generateFilesForAoCore(arg, cores);
    return (written || OXA::fail(error, arg.workDir + ": the Verilog cannot be written"))
        && generatedFingerprints(arg.workDir, built.cores, built.fingerprints, error);
}

// A core whose generated files differ for all kinds of devices.
std::unique_ptr<OXA::AoCore> deviceProbeCore()
{
    auto core = std::make_unique<OXA::AoCore>(0);
    core->implementation = OXA::ShadowSram;
    OXA::SignalItem signal;
    signal.name = "s";
    core->signalList = {signal};
    core->captureSignals = core->signalList;
    return core;
}

// One part of each kind that makes a difference in generated files; first the kind without a part.
QList<DEV::ChipInfo> kindsOfParts(const QString& configFile)
{
    const std::unique_ptr<OXA::AoCore> core = deviceProbeCore();
    QList<DEV::ChipInfo> kinds;
    QSet<QString> names;
    QSet<quint32> known;
    for (const DEV::ChipInfo& chip :
        QList<DEV::ChipInfo>({DEV::ChipInfo()}) + DEV::DeviceDb::instance().chips()) {
        const QString name = chip.name + ' ' + chip.variant;
        if (names.contains(name))
            continue;
        names += name;
        BuiltConfiguration built;
        built.cores.resize(1);
        built.cores[0].core = core.get();
        if (!fingerprintsOf(argOf(configFile, chip), {core.get()}, {}, built, nullptr)
            || known.contains(built.fingerprints[0]))
            continue;
        known += built.fingerprints[0];
        kinds += chip;
    }
    return kinds;
}

}

bool generatedFingerprints(const QString& workDir, const std::vector<CorePlan>& cores,
    std::vector<quint32>& fingerprints, QString* error)
{
    fingerprints.assign(cores.size(), 0);
    for (size_t core = 0; core < cores.size(); ++core) {
        const bool ok = cores[core].core
            ? OXA::generatedFingerprint(
                workDir, int(core), *cores[core].core, fingerprints[core], error)
            : OXA::generatedLiteFingerprint(workDir, fingerprints[core], error);
        if (!ok)
            return false;
    }
    return true;
}

std::vector<BuiltConfiguration> builtConfigurations(const QString& configFile,
    const QList<OXA::AoCore*>& cores, const QList<OXA::AOCore_Lite*>& liteCores, Messages& messages)
{
    std::vector<BuiltConfiguration> all;
    corePlans(cores, liteCores, argOf(configFile, {}), messages);
    if (cores.isEmpty() && liteCores.isEmpty())
        messages.append({configFile, "it contains no core"});
    if (!messages.isEmpty())
        return all;
    for (const DEV::ChipInfo& chip : kindsOfParts(configFile)) {
        BuiltConfiguration built;
        built.arg = argOf(configFile, chip);
        built.cores = corePlans(cores, liteCores, built.arg, messages);
        QString error;
        if (!fingerprintsOf(built.arg, cores, liteCores, built, &error))
            messages.append({configFile, error});
        if (!messages.isEmpty())
            return {};
        all.push_back(std::move(built));
    }
    return all;
}

}
