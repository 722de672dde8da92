// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/source_list.h"

#include "oxautils/generate/device_rules.h"
#include "oxautils/generate/file_names.h"

#include <QDir>

namespace OXA {

namespace {

constexpr char kStandardRoot[] = "/OXA";
constexpr char kLiteRoot[] = "/OXA_LITE";

constexpr const char* kStandardCoreFiles[]
    = {"qx_ao_crc32.v", "qx_ao_match.v", "qx_ao_mem_ctrl.v", "qx_ao_top.v"};
constexpr const char* kLiteCoreFiles[] = {"qx_ao_mem_ctrl.v", "qx_ao_top.v"};

template <typename Names>
void appendCore(QStringList& files, const QString& root, int position, const Names& names)
{
    const QString directory = root + "/QX_AO_" + QString::number(position) + "/";
    for (const char* name : names)
        files += directory + name;
}

QString controlTop(const OxaArg& arg, const char* root)
{
    return arg.ipDir + root + "/QX_CON/" + controlTopName(chipOf(arg));
}

QStringList includePaths(const OxaArg& arg, const char* root)
{
    return {QDir::cleanPath(arg.workDir), QDir::cleanPath(arg.ipDir + root)};
}

}

QStringList standardSources(const OxaArg& arg, int coreCount)
{
    QStringList files;
    for (int position = 0; position < coreCount; ++position)
        appendCore(files, arg.ipDir + kStandardRoot, position, kStandardCoreFiles);
    files += controlTop(arg, kStandardRoot);
    return files;
}

QStringList liteSources(const OxaArg& arg)
{
    QStringList files;
    appendCore(files, arg.ipDir + kLiteRoot, 0, kLiteCoreFiles);
    files += controlTop(arg, kLiteRoot);
    return files;
}

QString topWrapperPath(const OxaArg& arg) { return arg.workDir + "/" + OXA_TOP_FILE_NAME; }

QStringList standardIncludePaths(const OxaArg& arg) { return includePaths(arg, kStandardRoot); }

QStringList liteIncludePaths(const OxaArg& arg) { return includePaths(arg, kLiteRoot); }

}
