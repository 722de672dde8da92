// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_SYNTHESIS_OPTIONS_H
#define OXAUTILS_GENERATE_SYNTHESIS_OPTIONS_H

#include "oxautils/oxautils_export.h"

#include <QStringList>

namespace OXA {

/// Option lines for hosts that run another engine; this library's requests do not use them.
OXAUTILS_EXPORT extern const QStringList COMMON_SYN_OPTIONS;

}

#endif
