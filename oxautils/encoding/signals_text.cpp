// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/signals_text.h"

#include "files/fail.h"

#include <QRegularExpression>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kMostNames = 5; // in an error

struct Known {
    QString text;
    SignalItem item;
};

QString nameOf(const SignalItem& item)
{
    const QString& name = item.text.isEmpty() ? item.name : item.text;
    const QString width = item.isBus() ? QString(" (%1)").arg(item.bitCount()) : QString();
    return name + width + (item.captureEnable ? "" : " (not captured)");
}

void addKnown(const QList<SignalItem>& items, QString SignalItem::*text, QList<Known>& known)
{
    for (const SignalItem& item : items) {
        if (!(item.*text).isEmpty())
            known.append({item.*text, item});
        addKnown(item.subItems, text, known);
    }
}

/// The signals of `core` by each of their texts, long texts first, because one text may begin with
/// another. Names are before equal display texts.
QList<Known> knownSignals(const AoCore& core)
{
    QList<SignalItem> items = core.signalList;
    for (const TriggerPort* port : core.triggers)
        items += port->signalList;
    QList<Known> known;
    addKnown(items, &SignalItem::name, known);
    addKnown(items, &SignalItem::text, known);
    std::stable_sort(known.begin(), known.end(),
        [](const Known& a, const Known& b) { return a.text.size() > b.text.size(); });
    return known;
}

/// The end of the text of `known` that begins at `start`: after the comma, or at the end of the
/// text; -1 when it is not there.
int endOf(const Known& known, const QString& text, int start)
{
    static const QRegularExpression rest(
        "\\G(?: \\(\\d+\\))?(?: \\(not captured\\))?\\s*(?:,\\s*|$)");
    if (QStringView(text).mid(start, known.text.size()) != known.text)
        return -1;
    const auto match = rest.match(text, start + known.text.size());
    return match.hasMatch() ? match.capturedEnd() : -1;
}

QString unknownSignal(const QString& text, int at, const AoCore& core)
{
    QStringList names;
    for (const SignalItem& item : core.signalList)
        names += item.name;
    const int more = names.size() - kMostNames;
    return QString("character %1, \"%2\": the core has no such signal, but %3%4")
        .arg(QString::number(at + 1), text.mid(at), names.mid(0, kMostNames).join(", "),
            more > 0 ? QString(" and %1 more").arg(more) : QString());
}

}

QString signalsText(const QList<SignalItem>& items)
{
    QStringList names;
    for (const SignalItem& item : items)
        names += nameOf(item);
    return names.join(", ");
}

bool signalsFromText(
    const QString& text, const AoCore& core, QList<SignalItem>& items, QString* error)
{
    const QList<Known> known = knownSignals(core);
    QList<SignalItem> found;
    int at = 0;
    do {
        int end = -1;
        for (int i = 0; i < known.size() && end < 0; ++i) {
            end = endOf(known.at(i), text, at);
            if (end >= 0)
                found += known.at(i).item;
        }
        if (end < 0)
            return fail(error, unknownSignal(text, at, core));
        found.last().captureEnable = true; // a port's own mark is not used
        at = end;
    } while (at < text.size());
    items = found;
    return true;
}

}
