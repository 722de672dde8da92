// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/fst_blocks.h"

#include <QFile>
#include <QtEndian>

namespace OXA_CAPTURE {

bool hasWholeFstBlocks(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const qint64 size = file.size();
    qint64 at = 0;
    while (at < size) {
        const QByteArray start = file.seek(at) ? file.read(kFstMarkSize) : QByteArray();
        if (start.size() < kFstMarkSize)
            return false;
        const quint64 length = qFromBigEndian<quint64>(start.constData() + 1); // without the type
        if (length < 8 || length > quint64(size - at - 1))
            return false;
        at += 1 + qint64(length);
    }
    return size > 0;
}

}
