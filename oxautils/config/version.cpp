// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/version.h"

#include <QStringList>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kBelow = 1;
constexpr int kEqual = 2;
constexpr int kAbove = 4;

int partAt(const QStringList& parts, int i)
{
    if (i >= parts.size())
        return 0;
    bool ok = false;
    const int part = parts.at(i).toInt(&ok);
    if (!ok)
        throw CompareException("Invalid Oxa config file.");
    return part;
}

}

CompareException::CompareException(const QString& message)
    : m_message(message)
    , m_what(message.toUtf8())
{
}

CompareException::~CompareException() = default;

int compareVersion(const QString& a, const QString& b)
{
    const QStringList aParts = a.split('.', Qt::SkipEmptyParts);
    const QStringList bParts = b.split('.', Qt::SkipEmptyParts);
    for (int i = 0; i < std::max(aParts.size(), bParts.size()); ++i) {
        const int aPart = partAt(aParts, i);
        const int bPart = partAt(bParts, i);
        if (aPart != bPart)
            return aPart > bPart ? kAbove : kBelow;
    }
    return kEqual;
}

}
