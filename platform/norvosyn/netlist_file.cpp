#include "netlist_file.h"

#include <QFile>
#include <QSaveFile>

namespace NorvoSyn {
namespace {

constexpr qint64 kChunk = 1 << 20;

bool copy(QFile& from, QSaveFile& to)
{
    while (!from.atEnd()) {
        const QByteArray chunk = from.read(kChunk);
        if (chunk.isEmpty() || to.write(chunk) != chunk.size())
            return false;
    }
    return true;
}

}

bool deliverNetlist(const QString& netlist, const QString& output, QString& problem)
{
    QFile from(netlist);
    if (!from.open(QIODevice::ReadOnly) || from.size() == 0) {
        problem = "the synthesis engine ended without a netlist";
        return false;
    }
    QSaveFile to(output);
    // A commit would not notice that what it flushes is lost.
    if (to.open(QIODevice::WriteOnly) && copy(from, to) && to.flush() && to.commit())
        return true;
    problem = QString("cannot write %1: %2").arg(output, to.errorString());
    return false;
}

}
