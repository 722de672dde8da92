// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_PARSE_ONCE_H
#define OXAUTILS_CONFIG_PARSE_ONCE_H

#include "oxautils/oxautils_export.h"

#include <QByteArray>
#include <QString>

namespace OXA {

/// During its lifetime, this thread reads and parses a configuration file once for all functions of
/// the library: mode, cores, problems. A file whose size or times have changed is read again.
///
///     const ParseOnce once;
///     if (oxaModeFromOxaConfigFile(path) == Standard)
///         cores = readOXAConfigFromXml(path);
class OXAUTILS_EXPORT ParseOnce {
public:
    ParseOnce();
    ~ParseOnce();

private:
    Q_DISABLE_COPY(ParseOnce)
};

/// From now on, `content` is read in place of the configuration file `path`, which need not exist:
/// the library reads a file several times, which a pipe does not allow. Not while other threads
/// read.
OXAUTILS_EXPORT void setConfigurationText(const QString& path, const QByteArray& content);

}

#endif
