// SPDX-License-Identifier: Apache-2.0
#include "request.h"

#include "part.h"

#include "oxautils/generate/installed.h"

#include <QFileInfo>

namespace {

constexpr int kLeastClockHz = 10000;
constexpr int kMostClockHz = 500000000;

}

void addTargetOptions(Command& command, RequestOptions& options)
{
    addPartOptions(command, options.part);
    command
        .text("--for", options.family,
            "Family of devices that the catalogue does not know; `oxa devices --families` lists "
            "them")
        .typeName("FAMILY")
        .excludes("--part")
        .excludes("--device-db");
    command.text("--link", options.link, "How a client reaches the analyzer in the family")
        .typeName("LINK")
        .needs("--for");
    command
        .number(
            "--clock-hz", [&options](double hz) { options.uart.clockHz = int(hz); },
            "Frequency of the clock that --link uart runs from, such as 12e6")
        .between(kLeastClockHz, kMostClockHz)
        .typeName("HZ")
        .needs("--link");
    command
        .number("--baud", options.uart.baud,
            "Bits a second at which --link uart starts (default: 115200)")
        .between(OXA::kLeastBaud, OXA::kMostBaud)
        .needs("--link");
}

void addIpDir(Command& command, RequestOptions& options)
{
    command
        .text("--ip-dir", options.ipDir,
            "Directory of the installed cores (default: beside the program)")
        .typeName("DIR");
}

bool readConfiguration(const QString& file, OXA::Configuration& configuration, TextOut& err)
{
    QString error;
    if (OXA::readConfiguration(file, configuration, &error))
        return true;
    err.error(error, file);
    return false;
}

bool fillRequest(const RequestOptions& options, const QString& file, OXA::OxaArg& arg, TextOut& err)
{
    if (options.family.isEmpty()) {
        const std::optional<DEV::ChipInfo> chip = findPart(options.part, err);
        if (!chip)
            return false;
        arg.device = chip->partNumber;
        arg.package = chip->name;
    }
    arg.configFile = file;
    arg.ipDir = options.ipDir.isEmpty() ? OXA::installedIpDir() : options.ipDir;
    return true;
}

OXA::RememberedBuild rememberedAs(const RequestOptions& options, const OXA::OxaArg& arg)
{
    OXA::RememberedBuild build;
    build.original = QFileInfo(arg.configFile).absoluteFilePath();
    build.device = options.family.isEmpty() ? arg.device : options.family;
    return build;
}

bool findLink(const RequestOptions& options, const DEV::FamilyLink*& link, TextOut& err)
{
    link = nullptr;
    if (options.family.isEmpty()) {
        if (options.part.part.isEmpty())
            missing("--part or --for");
        return true;
    }
    const DEV::FamilyFacts* family = DEV::familyFacts(options.family);
    if (!family) {
        err.error("no family \"" + options.family + "\"; `oxa devices --families` lists them");
        return false;
    }
    link = DEV::familyLink(*family, options.link);
    if (!link)
        err.error(options.family + " has no link \"" + options.link
            + "\"; `oxa devices --families` lists them");
    const bool isUart = link && QLatin1String(link->name) == DEV::kUart;
    if (isUart && options.uart.clockHz == 0)
        missing("--clock-hz of --link uart");
    return link;
}

bool hasInstalledCores(const OXA::OxaArg& arg, TextOut& err)
{
    if (QFileInfo(arg.ipDir).isDir())
        return true;
    err.error("no installed cores in " + arg.ipDir + "; name their directory with --ip-dir");
    return false;
}
