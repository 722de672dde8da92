// SPDX-License-Identifier: Apache-2.0
#include "document_file.h"

#include "files/fail.h"
#include "oxautils/config/checksum.h"
#include "oxautils/config/configuration.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/standard_config.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

using namespace OXA;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Document", text); }

/// Moves the cores out of the reader's lists.
Cores takeCores(Configuration& configuration)
{
    Cores cores;
    for (AoCore* core : qAsConst(configuration.cores))
        cores += std::make_shared<Core>(core);
    for (AOCore_Lite* core : qAsConst(configuration.liteCores))
        cores += std::make_shared<Core>(core);
    configuration.cores.clear();
    configuration.liteCores.clear();
    return cores;
}

QString checksumWarning(const QString& path)
{
    const QString stored = readOXACRCForXml(path);
    const QString computed = computeOXACRCForXml(path);
    if (stored == computed)
        return {};
    if (stored.isEmpty())
        return tr("The file has no checksum: it was not written completely, or not by this "
                  "program.");
    return tr("The file's checksum %1 does not match its content (%2): another program changed it.")
        .arg(stored, computed);
}

bool readCores(const QString& path, LoadedFile& file, QString* error)
{
    Configuration configuration;
    if (!readConfiguration(path, configuration, error))
        return false;
    file.mode = configuration.mode == Lite ? Lite : Standard;
    file.cores = takeCores(configuration);
    return true;
}

void write(OxaMode mode, const Cores& cores, const QString& path)
{
    if (mode == Lite)
        writeOXAConfigToXml_Lite(liteCores(cores), path);
    else
        writeOXAConfigToXml(standardCores(cores), path);
}

}

bool loadFile(const QString& path, LoadedFile& file, QString* error)
{
    const ParseOnce once;
    if (!readCores(path, file, error))
        return false;
    file.bytes = fileBytes(path);
    const QString warning = checksumWarning(path);
    if (!warning.isEmpty())
        file.warnings += warning;
    for (const CorePtr& core : qAsConst(file.cores))
        file.changed |= core->standard && adoptMarkedPorts(*core->standard);
    if (file.changed)
        file.warnings
            += tr("The file has an older layout, in which trigger ports are also captured as "
                  "data. Their signals are now data signals.");
    return true;
}

QByteArray serialize(OxaMode mode, const Cores& cores, QString* error)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("configuration.oxa");
    write(mode, cores, path);
    QByteArray bytes = fileBytes(path);
    LoadedFile again;
    QString fault;
    if (!directory.isValid())
        fault = directory.errorString();
    else if (readCores(path, again, &fault) && again.cores.size() == cores.size())
        return bytes;
    else if (fault.isEmpty())
        fault = tr("The file that would be written cannot be read.");
    fail(error, fault);
    return {};
}

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
