#ifndef TESTS_GENERATE_PLATFORM_DOUBLE_H
#define TESTS_GENERATE_PLATFORM_DOUBLE_H

#include <QList>
#include <QMap>
#include <QStringList>
#include <QVariant>

#include <functional>

/// What the library asked of the platform that this program puts in the place of the installed one,
/// and what that answers.
struct PlatformDouble {
    QList<QMap<QString, QVariant>> requests;
    QStringList lookups; ///< "first|second" of every find
    int result = 0; ///< of the next runs
    QStringList messages;
    int stops = 0;
    std::function<void()> onLookup; ///< called by every find

    static PlatformDouble& instance();
};

#endif
