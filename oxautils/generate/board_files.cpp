// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/board_files.h"

#include "files/fail.h"
#include "files/replace_file.h"
#include "oxautils/generate/file_names.h"

#include <QDir>
#include <QFile>

namespace OXA {

namespace {

bool copyFiles(const OxaArg& arg, const QString& files, QStringList& copied, QString* error)
{
    const QString directory = arg.workDir + '/' + BOARD_DIR;
    QDir().mkpath(directory);
    for (const QString& name : files.split(' ', Qt::SkipEmptyParts)) {
        QFile source(arg.ipDir + "/boards/" + name);
        if (!source.open(QIODevice::ReadOnly))
            return fail(error, source.fileName() + ": cannot be read: " + source.errorString());
        const QString path = directory + '/' + name.section('/', -1);
        if (!OXA_FILES::writeFile(path, source.readAll(), error))
            return false;
        copied += path;
    }
    return true;
}

}

bool copyBoardFiles(
    const OxaArg& arg, const DEV::FamilyLink& link, BuildResult& result, QString* error)
{
    return copyFiles(arg, link.verilog, result.boardSources, error)
        && copyFiles(arg, link.openOcd, result.boardFiles, error)
        && copyFiles(arg, link.constraints, result.boardFiles, error);
}

}
