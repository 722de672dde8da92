// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/netlist_cells.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

namespace OXA {

QMap<QString, int> cellCounts(const QString& path)
{
    // "  LUT4 #(" or "  IBUF tms_ibuf ("; declarations and assignments end with a semicolon.
    static const QRegularExpression instance("^ +(\\\\?[A-Za-z_][\\w$]*) (#\\(|.* \\()$");
    QMap<QString, int> counts;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return counts;
    QTextStream in(&file);
    QString line;
    while (in.readLineInto(&line)) {
        const QRegularExpressionMatch match = instance.match(line);
        if (match.hasMatch())
            ++counts[match.captured(1)];
    }
    return counts;
}

}
