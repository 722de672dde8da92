// SPDX-License-Identifier: Apache-2.0
#include "name_check.h"

#include "signal_names.h"

#include "oxautils/model/shown_text.h"

#include <QCoreApplication>

using namespace OXA;

namespace {

constexpr int kMostSearched = 3; // names whose nearest names are searched

QString tr(const char* text) { return QCoreApplication::translate("NameCheck", text); }

/// Why the design has no such bit; empty when it has.
QString faultOf(const QString& bit, const DesignIndex& index, bool withNearest)
{
    const int signal = index.bit(bit).signal;
    if (signal < 0)
        return index.whyMissing(bit, withNearest);
    return index.design().items.at(signal).isMemory() ? tr("is in a memory") : QString();
}

}

QList<UnknownName> unknownNames(const QString& list, const DesignIndex& index)
{
    QList<UnknownName> unknown;
    const QStringList lines = list.split('\n');
    for (int line = 0; line < lines.size(); ++line) {
        QStringList errors;
        for (const QString& bit : flattenedNames(parseSignals(lines.at(line), errors))) {
            const QString fault = faultOf(bit, index, unknown.size() < kMostSearched);
            if (fault.isEmpty())
                continue;
            unknown.append({line, tr("%1 %2").arg(shownText(bit), fault)});
            break;
        }
    }
    return unknown;
}
