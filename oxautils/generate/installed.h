// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_INSTALLED_H
#define OXAUTILS_GENERATE_INSTALLED_H

#include <QCoreApplication>
#include <QDir>
#include <QString>

namespace OXA {

/// What was installed with the program that runs: `path` is "share/..." or "lib/...". A build tree
/// is laid out alike.
inline QString installed(const QString& path)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../" + path);
}

inline QString installedDataDir() { return installed("share/oxautils"); }

/// The analyzer's own Verilog, when the user names no other.
inline QString installedIpDir() { return installedDataDir() + "/ip"; }

}

#endif
