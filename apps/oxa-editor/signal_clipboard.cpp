// SPDX-License-Identifier: Apache-2.0
#include "signal_clipboard.h"

#include "signal_names.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

using namespace OXA;

namespace {

constexpr int kDeepest = 2; // a bus and its bits

void write(QDataStream& stream, const QList<SignalItem>& items)
{
    stream << qint32(items.size());
    for (const SignalItem& item : items) {
        stream << item.name << item.text << item.captureEnable;
        write(stream, item.subItems);
    }
}

QList<SignalItem> read(QDataStream& stream, int depth = 0)
{
    qint32 count = 0;
    stream >> count;
    QList<SignalItem> items;
    for (int i = 0; i < count && depth < kDeepest && stream.status() == QDataStream::Ok; ++i) {
        SignalItem item;
        stream >> item.name >> item.text >> item.captureEnable;
        item.subItems = read(stream, depth + 1);
        items += item;
    }
    return items;
}

}

QMimeData* toMimeData(const QList<SignalItem>& items)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    write(stream, items);
    auto* data = new QMimeData;
    data->setData(kSignalsType, bytes);
    data->setText(signalsText(items));
    return data;
}

QList<SignalItem> fromMimeData(const QMimeData* data, QStringList& errors)
{
    if (!data)
        return {};
    if (!data->hasFormat(kSignalsType))
        return parseSignals(data->text(), errors);
    QByteArray bytes = data->data(kSignalsType);
    QDataStream stream(&bytes, QIODevice::ReadOnly);
    return read(stream);
}
