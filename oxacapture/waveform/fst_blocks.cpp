// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/fst_blocks.h"

#include <QFile>
#include <QtEndian>

namespace OXA_CAPTURE {

namespace {

constexpr int kVersionPlace = 74; // bytes in front of it in a file that begins with its header

}

bool isFstVersionFull(const QString& path, const QByteArray& start)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)
        || file.read(kFstMarkSize) != QByteArray(kFstMark.data(), kFstMarkSize)
        || !file.seek(kVersionPlace))
        return false;
    const QByteArray version = file.read(kMostFstVersion);
    return version.size() == kMostFstVersion && version.startsWith(start)
        && !version.contains('\0');
}

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
