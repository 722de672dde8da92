// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_WATCHED_BITS_H
#define OXAUTILS_MODEL_WATCHED_BITS_H

#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <QStringList>

namespace OXA {

/// The names of all bits that a core is connected to; a bit can be in several places. A wrapper has
/// a port for each name.
struct WatchedBits {
    QStringList data;
    QStringList triggers; ///< of the available ports, in their order
    QString clock;
};

WatchedBits watchedBits(const AoCore& core);
WatchedBits watchedBits(const AOCore_Lite& core);

}

#endif
