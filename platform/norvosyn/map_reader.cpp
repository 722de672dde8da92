// SPDX-License-Identifier: Apache-2.0
#include "map_reader.h"

#include <QMultiMap>

#include <algorithm>
#include <iterator>

namespace NorvoSyn {

MapReader::MapReader(const QVariantMap& map, const QString& where, QStringList& problems)
    : m_map(map)
    , m_where(where)
    , m_problems(problems)
{
}

std::optional<QString> MapReader::text(const char* key)
{
    const std::optional<QVariant> found = value(key);
    if (!found)
        return {};
    if (found->userType() == QMetaType::QString)
        return found->toString();
    complain(key, "is not a text");
    return {};
}

std::optional<QVariantMap> MapReader::map(const char* key)
{
    const std::optional<QVariant> found = value(key);
    if (!found)
        return {};
    if (found->userType() == QMetaType::QVariantMap)
        return found->toMap();
    complain(key, "is not a map");
    return {};
}

std::optional<QVariantList> MapReader::list(const char* key)
{
    const std::optional<QVariant> found = value(key);
    if (!found)
        return {};
    const bool text // which Qt 6 converts to a list of characters
        = found->userType() == QMetaType::QString || found->userType() == QMetaType::QByteArray;
    if (!text && found->canConvert<QVariantList>())
        return found->toList();
    complain(key, "is not a list");
    return {};
}

QStringList MapReader::texts(const char* key)
{
    QStringList texts;
    const QVariantList values = QMultiMap<QString, QVariant>(m_map).values(key);
    for (const QVariant& value : values) {
        const QStringList list = value.toStringList(); // of a text, itself
        if (value.userType() != QMetaType::QString && value.userType() != QMetaType::QStringList)
            complain(key, "is not a text");
        else
            std::copy(list.rbegin(), list.rend(), std::back_inserter(texts));
    }
    return texts;
}

void MapReader::complain(const char* key, const QString& what)
{
    const QString place = m_where.isEmpty() ? QString() : QString("%1: ").arg(m_where);
    m_problems << QString("request: %1\"%2\" %3").arg(place, key, what);
}

std::optional<QVariant> MapReader::value(const char* key)
{
    if (m_map.contains(key))
        return m_map.value(key);
    complain(key, "is missing");
    return {};
}

}
