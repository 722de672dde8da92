#ifndef OXAUTILS_CONFIG_PARSE_ONCE_H
#define OXAUTILS_CONFIG_PARSE_ONCE_H

#include "oxautils/oxautils_export.h"

#include <QtGlobal>

namespace OXA {

/// Lets this thread read and parse a configuration file once, as long as an object of it lives,
/// however many of the functions here ask about the file: its mode, its cores, its problems. A file
/// that changes in between, as its size and times tell, is read anew.
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
