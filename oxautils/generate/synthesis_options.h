#ifndef OXAUTILS_GENERATE_SYNTHESIS_OPTIONS_H
#define OXAUTILS_GENERATE_SYNTHESIS_OPTIONS_H

#include "oxautils/oxautils_export.h"

#include <QStringList>

namespace OXA {

/// Option lines for hosts that drive an engine of their own; no request of this library holds them.
OXAUTILS_EXPORT extern const QStringList COMMON_SYN_OPTIONS;

}

#endif
