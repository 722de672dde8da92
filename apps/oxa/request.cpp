#include "request.h"

#include "installed.h"
#include "part.h"

#include <QFileInfo>

void addIpDir(CLI::App& command, RequestOptions& options)
{
    addText(command, "--ip-dir", options.ipDir, "The installed cores (default: beside the program)")
        ->type_name("DIR");
}

bool readConfiguration(const QString& file, OXA::Configuration& configuration, TextOut& err)
{
    QString error;
    if (OXA::readConfiguration(file, configuration, &error))
        return true;
    err.error(error);
    return false;
}

bool namesStayWords(const QString& file, const OXA::Configuration& configuration, TextOut& err)
{
    const QStringList faults = OXA::wordFaults(file, configuration);
    for (const QString& fault : faults)
        err << "error: " << fault << '\n';
    return faults.isEmpty();
}

bool fillRequest(const RequestOptions& options, const QString& file, OXA::OxaArg& arg, TextOut& err)
{
    const std::optional<DEV::ChipInfo> chip = findPart(options.part, err);
    if (!chip)
        return false;
    arg.configFile = file;
    arg.device = chip->partNumber;
    arg.package = chip->name;
    arg.ipDir = options.ipDir.isEmpty() ? installedIpDir() : options.ipDir;
    return true;
}

bool hasInstalledCores(const OXA::OxaArg& arg, TextOut& err)
{
    if (QFileInfo(arg.ipDir).isDir())
        return true;
    err << "error: no installed cores in " << arg.ipDir << "; name their directory with --ip-dir\n";
    return false;
}
