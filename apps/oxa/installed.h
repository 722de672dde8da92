#ifndef APPS_OXA_INSTALLED_H
#define APPS_OXA_INSTALLED_H

#include <QCoreApplication>
#include <QDir>
#include <QString>

/// What was installed with the program: `path` is "share/..." or "lib/...". A build tree is laid
/// out alike.
inline QString installed(const QString& path)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../" + path);
}

inline QString installedIpDir() { return installed("share/oxautils/ip"); }

#endif
