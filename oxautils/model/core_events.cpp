// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/core_events.h"

#include "oxautils/model/ao_core.h"

#include <algorithm>

namespace OXA {

bool operator==(const CoreEvents& a, const CoreEvents& b)
{
    return a.forcedBy == b.forcedBy && a.triggerOut == b.triggerOut && a.stamps == b.stamps;
}

QList<int> forcingPlaces(const QList<AoCore*>& cores, const AoCore& core)
{
    QList<int> places;
    for (int place = 0; place < cores.size(); ++place) {
        const AoCore* other = cores.at(place);
        if (other != &core && core.events.forcedBy.contains(other->index))
            places += place;
    }
    return places;
}

bool forcesOthers(const QList<AoCore*>& cores, const AoCore& core)
{
    return std::any_of(cores.begin(), cores.end(), [&core](const AoCore* other) {
        return other != &core && other->events.forcedBy.contains(core.index);
    });
}

}
