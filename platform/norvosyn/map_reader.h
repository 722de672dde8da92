#ifndef NORVOSYN_MAP_READER_H
#define NORVOSYN_MAP_READER_H

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace NorvoSyn {

/// One map of a request: hands out its values, and one complaint for each that is missing or of the
/// wrong type (the result is then empty).
class MapReader {
public:
    /// `where` names the map in the complaints: nothing for the request itself, "device" for the
    /// map under that key. Complaints are appended to `problems`.
    MapReader(const QVariantMap& map, const QString& where, QStringList& problems);

    std::optional<QString> text(const char* key);
    std::optional<QVariantMap> map(const char* key);
    std::optional<QVariantList> list(const char* key);

    /// Every text of a key that may be absent or repeated, the one inserted last first.
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
