// SPDX-License-Identifier: Apache-2.0
#include "map_reader.h"

#include <QMultiMap>

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
    if (found->type() == QVariant::String)
        return found->toString();
    complain(key, "is not a text");
    return {};
}

std::optional<QVariantMap> MapReader::map(const char* key)
{
    const std::optional<QVariant> found = value(key);
    if (!found)
        return {};
    if (found->type() == QVariant::Map)
        return found->toMap();
    complain(key, "is not a map");
    return {};
}

std::optional<QVariantList> MapReader::list(const char* key)
{
    const std::optional<QVariant> found = value(key);
    if (!found)
        return {};
    if (found->canConvert<QVariantList>())
        return found->toList();
    complain(key, "is not a list");
    return {};
}

QStringList MapReader::texts(const char* key)
{
    QStringList texts;
    const QVariantList values = QMultiMap<QString, QVariant>(m_map).values(key);
    for (const QVariant& value : values) {
        if (value.type() == QVariant::String)
            texts << value.toString();
        else
            complain(key, "is not a text");
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
