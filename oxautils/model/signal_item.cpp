// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/signal_item.h"

namespace OXA {

namespace {

QStringList flattened(const QList<SignalItem>& items, QString SignalItem::*field)
{
    QStringList texts;
    texts.reserve(items.size());
    for (const SignalItem& item : items) {
        if (!item.isBus())
            texts += item.*field;
        for (const SignalItem& bit : item.subItems)
            texts += bit.*field;
    }
    return texts;
}

}

QStringList flattenedNames(const QList<SignalItem>& items)
{
    return flattened(items, &SignalItem::name);
}

QStringList flattenedTexts(const QList<SignalItem>& items)
{
    return flattened(items, &SignalItem::text);
}

}
