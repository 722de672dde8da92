#ifndef OXAUTILS_CONFIG_PARSE_ONCE_H
#define OXAUTILS_CONFIG_PARSE_ONCE_H

#include "oxautils/oxautils_export.h"

#include <QtGlobal>

namespace OXA {

/// Lets this thread parse a large configuration file once, as long as an object of it lives,
/// however many of the functions here ask about the file: its mode, its cores, its checksums. A
/// file that changes in between is parsed anew. Small files need none of this.
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
