// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/device_rules.h"
#include "oxautils/generate/oxa_proxy_qx_syn_p.h"
#include "oxautils/generate/source_list.h"
#include "oxautils/model/log_categories.h"

#include <norvosyn/request_keys.h>

#include <QDir>

namespace OXA {

namespace {

QVariantMap deviceMap(const DEV::ChipInfo& chip)
{
    return {
        {NorvoSyn::ARG_DEVICE_PN,      chip.partNumber},
        {NorvoSyn::ARG_DEVICE_NAME,    chip.name      },
        {NorvoSyn::ARG_DEVICE_PACKAGE, chip.package   },
        {NorvoSyn::ARG_DEVICE_SPEED,   chip.speed     },
    };
}

QVariantList fileList(const QStringList& files)
{
    QVariantList list;
    for (const QString& file : files)
        list += QVariantMap {
            {NorvoSyn::ARG_FILE_PATH, QDir::cleanPath(file) },
            {NorvoSyn::ARG_FILE_TYPE, NorvoSyn::TYPE_VERILOG}
        };
    return list;
}

QVariantMap optionMap(const OxaArg& arg, const QStringList& includePaths)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QMultiMap<QString, QVariant> options; // QMap keeps its several values for a key
    for (const QString& path : includePaths)
        options.insert(NorvoSyn::OPT_INCLUDE_PATH, path);
#else
    QVariantMap options;
    options.insert(NorvoSyn::OPT_INCLUDE_PATH, includePaths);
#endif
    options.insert(NorvoSyn::OPT_OUTPUT_VERILOG, QDir::cleanPath(arg.outputFile));
    options.insert(NorvoSyn::OPT_DISABLE_IO, "1");
    return options;
}

}

bool _oxa_proxy_qxsyn::std_synthesize(OxaArg arg, QList<AoCore*> cores)
{
    const QStringList files = standardSources(arg, cores.size()) << topWrapperPath(arg);
    return synthesize(arg, "oxa_std", files, standardIncludePaths(arg));
}

bool _oxa_proxy_qxsyn::lite_synthesize(OxaArg arg, QList<AOCore_Lite*>)
{
    const QStringList files = liteSources(arg) << topWrapperPath(arg);
    return synthesize(arg, "oxa_lite", files, liteIncludePaths(arg));
}

bool _oxa_proxy_qxsyn::synthesize(const OxaArg& arg, const char* project, const QStringList& files,
    const QStringList& includePaths)
{
    const QVariantMap request {
        {NorvoSyn::WORK_DIR,     QDir::cleanPath(arg.workDir)},
        {NorvoSyn::PROJECT_NAME, project                     },
        {NorvoSyn::ARG_DEVICE,   deviceMap(chipOf(arg))      },
        {NorvoSyn::ARG_FILE,     fileList(files)             },
        {NorvoSyn::ARG_OPTION,   optionMap(arg,                includePaths)},
        {NorvoSyn::INI_CONFIG,                      QStringList {"RESOURCE_CHECK=false"}                              },
    };
    if (endFiles()) {
        errors += "the synthesis was stopped before it began";
        return false;
    }
    const int result = proxy->run(request);
    qCDebug(logGenerate) << "syn ao con" << result;
    if (result != 0)
        errors += proxy->messages();
    return result == 0;
}

}
