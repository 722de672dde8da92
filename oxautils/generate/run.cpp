// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/run.h"

#include "files/empty_directory.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_document.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/inputs.h"
#include "oxautils/model/log_categories.h"

namespace OXA {

namespace {

bool refuse(const QString& reason)
{
    qCCritical(logGenerate).noquote() << reason;
    return false;
}

/// Reads the mode of the configuration file; false when it cannot be read as XML.
bool readMode(const QString& path, OxaMode& mode)
{
    mode = oxaModeFromOxaConfigFile(path);
    XmlDocument document;
    return mode != Invalid || loadXml(path, document);
}

}

bool clearWorkDir(const OxaArg& arg, OxaMode& mode)
{
    if (arg.workDir.isEmpty()) // generated paths would begin at the root directory
        return refuse("the work directory's name is empty");
    if (const QString lost = OXA_FILES::lostByEmptying(arg.workDir, inputsOf(arg)); !lost.isEmpty())
        return refuse(
            QString("the work directory %1 would be emptied, but it contains, or is in, %2")
                .arg(arg.workDir, lost));
    if (!readMode(arg.configFile, mode))
        return refuse(QString("%1 cannot be read, so nothing is generated").arg(arg.configFile));
    OXA_FILES::emptyDirectory(arg.workDir, WORK_DIR_MARK);
    return true;
}

bool mayWriteOutput(const OxaArg& arg)
{
    const QString lost = OXA_FILES::lostByWriting(arg.outputFile, inputsOf(arg));
    return lost.isEmpty()
        || refuse(QString("the netlist %1 would replace %2").arg(arg.outputFile, lost));
}

QList<AOCore_Lite*> readLiteCores(const QString& path)
{
    try {
        return readOXAConfigFromXml_Lite(path);
    } catch (const CompareException& exception) {
        qCCritical(logGenerate).noquote() << path + ":" << exception.message();
        return {};
    }
}

}
