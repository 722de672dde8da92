#include "oxautils/generate/verilog_file.h"

#include "oxautils/generate/file_names.h"

#include <QDebug>
#include <QDir>
#include <QFile>

namespace OXA {

bool writeVerilogFile(
    const QString& path, const QString& failure, const std::function<void(QTextStream&)>& write)
{
    QFile file(path);
    bool ok = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    if (ok) {
        QTextStream out(&file);
        out.setCodec("UTF-8");
        write(out);
        out.flush();
        ok = out.status() == QTextStream::Ok && file.flush();
    }
    if (!ok)
        qCritical().noquote() << failure;
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
