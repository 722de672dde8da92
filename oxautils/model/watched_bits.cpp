// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/watched_bits.h"

namespace OXA {

WatchedBits watchedBits(const AoCore& core)
{
    WatchedBits bits {core.dataSignals(), {}, core.sampleClock};
    for (const TriggerPort* port : core.availableTriggers())
        bits.triggers += port->singleSignals();
    return bits;
}

WatchedBits watchedBits(const AOCore_Lite& core)
{
    return {core.dataSignals(), {}, core.sampleClock};
}

}
