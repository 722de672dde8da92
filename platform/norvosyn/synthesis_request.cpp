// SPDX-License-Identifier: Apache-2.0
#include "synthesis_request.h"

#include "map_reader.h"
#include "request_keys.h"

#include "files/input_guard.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace NorvoSyn {
namespace {

constexpr char kResourceCheck[] = "RESOURCE_CHECK";

QString absolute(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

/// Why the engine cannot read `path`; empty when it can.
QString unusable(const QString& path)
{
    if (path.isEmpty())
        return "is empty";
    for (const QChar c : path) {
        if (c.category() == QChar::Other_Control)
            return "contains a control character";
        // Its Tcl is limited to these characters, and its preprocessor quotes names.
        if (c.isSurrogate() || c == '"')
            return QString("contains %1, which the engine cannot read: %2")
                .arg(c == '"' ? "a double quote" : "a character past U+FFFF", path);
    }
    return {};
}

void readProjectName(MapReader& top, SynthesisRequest& request)
{
    static const QRegularExpression fit("\\A[A-Za-z0-9_][A-Za-z0-9_.-]{0,99}\\z");
    const std::optional<QString> name = top.text(PROJECT_NAME);
    if (!name)
        return;
    if (!fit.match(*name).hasMatch())
        top.complain(PROJECT_NAME,
            QString("cannot name files (letters, digits, \"_\", \".\" and \"-\" can): \"%1\"")
                .arg(*name));
    request.projectName = *name;
}

void readDevice(MapReader& top, SynthesisRequest& request, QStringList& problems)
{
    const std::optional<QVariantMap> map = top.map(ARG_DEVICE);
    if (!map)
        return;
    MapReader device(*map, ARG_DEVICE, problems);
    request.partNumber = device.text(ARG_DEVICE_PN).value_or(QString());
    request.deviceName = device.text(ARG_DEVICE_NAME).value_or(QString());
    device.text(ARG_DEVICE_PACKAGE);
    device.text(ARG_DEVICE_SPEED);
}

void readSource(MapReader& file, SynthesisRequest& request)
{
    const std::optional<QString> path = file.text(ARG_FILE_PATH);
    const std::optional<QString> type = file.text(ARG_FILE_TYPE);
    if (type && *type != TYPE_VERILOG)
        file.complain(ARG_FILE_TYPE, QString("is \"%1\", not \"%2\"").arg(*type, TYPE_VERILOG));
    if (!path)
        return;

    const QFileInfo info(*path);
    if (const QString why = unusable(*path); !why.isEmpty())
        file.complain(ARG_FILE_PATH, why);
    else if (!info.isFile() || !info.isReadable())
        file.complain(ARG_FILE_PATH, QString("is not a readable file: %1").arg(*path));
    request.sources << absolute(*path);
}

void readSources(MapReader& top, SynthesisRequest& request, QStringList& problems)
{
    const std::optional<QVariantList> files = top.list(ARG_FILE);
    if (!files)
        return;
    if (files->isEmpty())
        top.complain(ARG_FILE, "contains no file");
    for (int i = 0; i < files->size(); ++i) {
        const QString where = QString("%1[%2]").arg(ARG_FILE, QString::number(i));
        if (files->at(i).userType() != QMetaType::QVariantMap) {
            problems << QString("request: \"%1\" is not a map").arg(where);
            continue;
        }
        MapReader file(files->at(i).toMap(), where, problems);
        readSource(file, request);
    }
}

void readOutputFile(MapReader& options, SynthesisRequest& request)
{
    const std::optional<QString> path = options.text(OPT_OUTPUT_VERILOG);
    if (!path)
        return;
    if (path->isEmpty())
        return options.complain(OPT_OUTPUT_VERILOG, "is empty");

    request.outputFile = absolute(*path);
    const QFileInfo info(request.outputFile);
    if (info.isDir())
        options.complain(OPT_OUTPUT_VERILOG, QString("is a directory: %1").arg(*path));
    else if (!info.dir().exists() && info.path() != request.workDir)
        options.complain(OPT_OUTPUT_VERILOG,
            QString("is in a directory that does not exist: %1").arg(info.path()));
    else if (const QString source
             = OXA_FILES::lostByWriting(request.outputFile, {request.sources, {}});
             !source.isEmpty())
        options.complain(OPT_OUTPUT_VERILOG, QString("is one of the sources: %1").arg(source));
}

void readOptions(MapReader& top, SynthesisRequest& request, QStringList& problems)
{
    const std::optional<QVariantMap> map = top.map(ARG_OPTION);
    if (!map)
        return;
    MapReader options(*map, ARG_OPTION, problems);
    readOutputFile(options, request);
    request.insertPads = options.texts(OPT_DISABLE_IO).value(0) != "1";
    const QStringList paths = options.texts(OPT_INCLUDE_PATH);
    for (const QString& path : paths) {
        if (const QString why = unusable(path); !why.isEmpty())
            options.complain(OPT_INCLUDE_PATH, why);
        // The map lists the first inserted value last; it has to be searched first: generated files
        // before installed ones of the same name.
        request.includePaths.prepend(absolute(path));
    }
}

void readSettings(MapReader& top, SynthesisRequest& request)
{
    const QVariantList settings = top.list(INI_CONFIG).value_or(QVariantList());
    for (const QVariant& setting : settings) {
        if (setting.userType() != QMetaType::QString) {
            top.complain(INI_CONFIG, "contains an entry that is not a text");
            continue;
        }
        const QString text = setting.toString();
        if (text.section('=', 0, 0).trimmed() == kResourceCheck)
            request.checkResources = text.section('=', 1).trimmed().toLower() != "false";
    }
}

void readWorkDir(MapReader& top, SynthesisRequest& request)
{
    const std::optional<QString> path = top.text(WORK_DIR);
    if (path && path->isEmpty())
        top.complain(WORK_DIR, "is empty");
    else if (path)
        request.workDir = absolute(*path);
}

}

bool readRequest(const QVariantMap& map, SynthesisRequest& request, QStringList& problems)
{
    QStringList found;
    MapReader top(map, QString(), found);
    readWorkDir(top, request);
    readProjectName(top, request);
    readDevice(top, request, found);
    readSources(top, request, found);
    readOptions(top, request, found);
    readSettings(top, request);
    // Last, so that an invalid request creates no directory.
    if (found.isEmpty() && !QDir().mkpath(request.workDir))
        top.complain(
            WORK_DIR, QString("is not a directory and cannot be created: %1").arg(request.workDir));
    problems << found;
    return found.isEmpty();
}

}
