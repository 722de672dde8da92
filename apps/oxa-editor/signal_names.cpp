// SPDX-License-Identifier: Apache-2.0
#include "signal_names.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegularExpression>

#include <cstdlib>

using namespace OXA;

namespace {

constexpr int kMaxBusWidth = 4096;

QString tr(const char* text) { return QCoreApplication::translate("SignalNames", text); }

SignalItem single(const QString& name)
{
    SignalItem item;
    item.name = name;
    return item;
}

QString bitName(const QString& bus, int bit)
{
    return QString("%1[%2]").arg(bus, QString::number(bit));
}

SignalItem makeBus(const QString& name, int first, int last)
{
    SignalItem bus = single(name);
    const int step = first > last ? -1 : 1;
    for (int bit = first;; bit += step) {
        bus.subItems += single(bitName(name, bit));
        if (bit == last)
            return bus;
    }
}

/// The number in the brackets at the end of a bit's name; -1 when `name` is not a bit of `bus`.
int bitNumber(const QString& name, const QString& bus)
{
    if (!name.startsWith(bus + '[') || !name.endsWith(']'))
        return -1;
    bool ok = false;
    const int number = name.mid(bus.size() + 1, name.size() - bus.size() - 2).toInt(&ok);
    return ok ? number : -1;
}

bool isXmlCharacter(QChar c)
{
    return c.unicode() >= 0x20 && !c.isSurrogate() && c.unicode() < 0xfffe;
}

QString commonPrefix(const QList<SignalItem>& items)
{
    QString prefix = items.first().name;
    for (const SignalItem& item : items) {
        int length = 0;
        while (length < qMin(prefix.size(), item.name.size())
            && prefix.at(length) == item.name.at(length))
            ++length;
        prefix.truncate(length);
    }
    return prefix;
}

}

QString cleanName(const QString& text)
{
    QString name;
    for (const QChar c : text) {
        if (isXmlCharacter(c))
            name += c;
    }
    return name.trimmed();
}

QList<SignalItem> parseSignals(const QString& text, QStringList& errors)
{
    static const QRegularExpression behind(R"(^(.*\S)\s*\[(\d+):(\d+)\]$)");
    static const QRegularExpression before(R"(^\[(\d+):(\d+)\]\s*(.*\S)$)");
    QList<SignalItem> items;
    for (const QString& line : text.split('\n')) {
        const QString name = cleanName(line);
        const auto after = behind.match(name);
        const auto ahead = before.match(name);
        if (name.isEmpty())
            continue;
        if (!after.hasMatch() && !ahead.hasMatch()) {
            items += single(name);
            continue;
        }
        const auto& match = after.hasMatch() ? after : ahead;
        const int firstGroup = after.hasMatch() ? 2 : 1;
        bool ok = false;
        bool alsoOk = false;
        const int first = match.captured(firstGroup).toInt(&ok);
        const int last = match.captured(firstGroup + 1).toInt(&alsoOk);
        if (ok && alsoOk && std::abs(first - last) < kMaxBusWidth)
            items += makeBus(match.captured(after.hasMatch() ? 1 : 3), first, last);
        else
            errors += tr("\"%1\" has more than %2 bits").arg(name, QString::number(kMaxBusWidth));
    }
    return items;
}

QString signalsText(const QList<SignalItem>& items)
{
    QStringList lines;
    for (const SignalItem& item : items) {
        if (!item.isBus()) {
            lines += item.name;
            continue;
        }
        const int first = bitNumber(item.subItems.first().name, item.name);
        const int last = bitNumber(item.subItems.last().name, item.name);
        const bool regular = first >= 0 && last >= 0
            && flattenedNames({item}) == flattenedNames({makeBus(item.name, first, last)});
        if (regular)
            lines += QString("%1[%2:%3]")
                         .arg(item.name, QString::number(first), QString::number(last));
        else
            lines += flattenedNames({item});
    }
    return lines.join('\n');
}

SignalItem groupSignals(const QList<SignalItem>& bits)
{
    static const QRegularExpression tail(R"([\[\]\d_./:\s]*$)");
    QString name = commonPrefix(bits);
    name.remove(tail);
    SignalItem bus = single(name.isEmpty() ? QString("bus") : name);
    bus.subItems = bits;
    return bus;
}

bool isNamedIn(const QString& text, const QString& name)
{
    const auto ends = [&text](int at) {
        const QChar c = at >= 0 && at < text.size() ? text.at(at) : QChar(' ');
        return !c.isLetterOrNumber() && !QString("_/[").contains(c);
    };
    for (int at = text.indexOf(name); at >= 0 && !name.isEmpty(); at = text.indexOf(name, at + 1)) {
        if (ends(at - 1) && ends(at + name.size()))
            return true;
    }
    return false;
}

QString bitsText(int bits) { return bits == 1 ? tr("1 bit") : tr("%1 bits").arg(bits); }

QString listNumber(int number)
{
    const QChar figureSpace(0x2007);
    return QString::number(number).leftJustified(2, figureSpace);
}

QString shownName(const SignalItem& item) { return item.text.isEmpty() ? item.name : item.text; }

QString movedValue(
    const QString& value, const QStringList& before, const QStringList& after, QChar filler)
{
    if (value.isEmpty() || before == after)
        return value;
    // Like the hardware's registers: a short value is padded on the left, a long one cut on the
    // right.
    const QString old = value.rightJustified(before.size(), '0');
    QHash<QString, QList<QChar>> bits;
    for (int i = 0; i < before.size(); ++i)
        bits[before.at(i)] += old.at(i);
    QString moved;
    for (const QString& name : after) {
        QList<QChar>& characters = bits[name];
        moved += characters.isEmpty() ? filler : characters.takeFirst();
    }
    return moved;
}
