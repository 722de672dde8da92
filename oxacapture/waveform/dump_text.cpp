// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/dump_text.h"

#include "oxacapture/waveform/bus_range.h"

#include <QRegularExpression>

namespace OXA_CAPTURE {

namespace {

QString takeBusName(const OXA::SignalItem& bus, UniqueNames& names)
{
    static const QRegularExpression blanks("\\s+");
    QStringList bits;
    for (const OXA::SignalItem& bit : bus.subItems)
        bits += dumpWord(QString(bit.name).remove(blanks));
    const OXA::BitRange range = busRange(bits, dumpWord(bus.name));
    return names.take(range.base, ' ' + range.text());
}

// Replaces the brackets of a single signal, which would look like a range.
QString takeSignalName(const QString& signal, UniqueNames& names)
{
    QString name = dumpWord(signal);
    int index = 0;
    if (takeIndex(name, index))
        return names.take(name, QString("[%1]").arg(index));
    if (name.endsWith(']'))
        name.replace('[', '(').replace(']', ')');
    return names.take(name);
}

}

QByteArray dumpIdentifier(int number)
{
    QByteArray id;
    do {
        id += char('!' + number % 94);
        number /= 94;
    } while (number > 0);
    return id;
}

QString dumpWord(const QString& name)
{
    static const QRegularExpression unusable("[\\s\\p{C}]+");
    const QString word = QString(name).remove('\\').replace(unusable, "_");
    return word.startsWith('$') ? '_' + word : word;
}

QString takeDumpName(const OXA::SignalItem& item, UniqueNames& names)
{
    return item.isBus() ? takeBusName(item, names) : takeSignalName(item.name, names);
}

QString dumpDeclaration(
    const char* kind, int width, const QByteArray& identifier, const QString& name)
{
    return QString("$var %1 %2 %3 %4 $end\n")
        .arg(QLatin1String(kind), QString::number(width), QString(identifier), name);
}

void addDumpChange(const QByteArray& bits, const QByteArray& identifier, QByteArray& text)
{
    if (bits.size() == 1)
        text.append(bits).append(identifier).append('\n');
    else
        text.append('b').append(bits).append(' ').append(identifier).append('\n');
}

}
