// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_PARSE_ONCE_H
#define OXAUTILS_CONFIG_PARSE_ONCE_H

#include "oxautils/oxautils_export.h"

#include <QtGlobal>

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

}

#endif
