// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_MAP_READER_H
#define NORVOSYN_MAP_READER_H

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace NorvoSyn {

/// Reads the values of one map of a request. A missing value, or one of the wrong type, is reported
/// and read as empty.
class MapReader {
public:
    /// `where` is the map's name in the complaints: empty for the request itself, "device" for the
    /// map under that key. Complaints are appended to `problems`.
    MapReader(const QVariantMap& map, const QString& where, QStringList& problems);

    std::optional<QString> text(const char* key);
    std::optional<QVariantMap> map(const char* key);
    std::optional<QVariantList> list(const char* key);

    /// All texts of an optional, repeatable key, the last inserted first.
    QStringList texts(const char* key);

    void complain(const char* key, const QString& what);

private:
    std::optional<QVariant> value(const char* key);

    QVariantMap m_map;
    QString m_where;
    QStringList& m_problems;
};

}

#endif
