// SPDX-License-Identifier: Apache-2.0
#include "oxautils/editor/oxautils_common.h"

#include <QTreeWidget>

namespace OXA {

namespace {

QTreeWidgetItem* makeRow(const SignalItem& item)
{
    auto* row = new QTreeWidgetItem;
    const QString& shown = item.text.isEmpty() ? item.name : item.text;
    row->setText(0, shown);
    row->setToolTip(0, shown);
    return row;
}

}

void Signal2treeItem(QTreeWidget* tree, SignalItem item)
{
    QTreeWidgetItem* row = makeRow(item);
    for (const SignalItem& bit : qAsConst(item.subItems))
        row->addChild(makeRow(bit));
    tree->addTopLevelItem(row);
}

QString BitWidthAdjust(const QString& value, int width)
{
    return value.right(qMax(width, 0)).rightJustified(width, '0');
}

bool checkExcessBitWidth(const QString& value, int width) { return width >= value.length(); }

QString changeRadix(const QString& value, int fromBase, int toBase, int width)
{
    bool ok = false;
    const qulonglong number = value.toULongLong(&ok, fromBase);
    return ok ? QString::number(number, toBase) : QString(qMax(width, 0), '0');
}

}
