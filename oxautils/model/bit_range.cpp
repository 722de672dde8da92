// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/bit_range.h"

#include <QRegularExpression>

namespace OXA {

QString BitRange::bitName(int place) const
{
    const qint64 index = msb <= lsb ? qint64(msb) + place : qint64(msb) - place;
    return base + QString("[%1]").arg(index);
}

QString BitRange::text() const
{
    return QString("[%1:%2]").arg(QString::number(msb), QString::number(lsb));
}

bool takeIndex(QString& name, int& index)
{
    static const QRegularExpression indexed("^(.+)\\[(-?\\d+)\\]$");
    const auto match = indexed.match(name);
    bool ok = false;
    index = match.captured(2).toInt(&ok);
    if (!ok || QString::number(index) != match.captured(2))
        return false;
    name = match.captured(1);
    return true;
}

bool bitRange(const QStringList& bits, BitRange& range)
{
    range.base = bits.value(0);
    QString last = bits.value(bits.size() - 1);
    if (!takeIndex(range.base, range.msb) || !takeIndex(last, range.lsb))
        return false;
    for (int bit = 0; bit < bits.size(); ++bit) {
        if (bits.at(bit) != range.bitName(bit))
            return false;
    }
    return true;
}

}
