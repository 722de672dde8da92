// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/verilog_file.h"

#include "files/replace_file.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/model/log_categories.h"

#include <QDir>

namespace OXA {

bool writeVerilogFile(
    const QString& path, const QString& failure, const std::function<void(QTextStream&)>& write)
{
    const auto fill = [&write](QIODevice& file, QString*) {
        QTextStream out(&file);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        out.setCodec("UTF-8"); // Qt 6 writes it anyway
#endif
        write(out);
        out.flush();
        return out.status() == QTextStream::Ok;
    };
    const bool ok = OXA_FILES::writeFile(path, fill, nullptr);
    if (!ok)
        qCCritical(logGenerate).noquote() << failure;
    return ok;
}

bool writeVerilogFile(
    const QString& directory, const char* name, const std::function<void(QTextStream&)>& write)
{
    QDir().mkpath(directory);
    return writeVerilogFile(
        directory + "/" + name, QString("failed to generate %1").arg(name), write);
}

QString coreDirectory(const QString& workDir, int position)
{
    return workDir + "/" + NAME_AO + QString::number(position);
}

}
