// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/core_storage.h"

#include "oxautils/model/ao_core.h"
#include "oxautils/model/signal_item.h"

namespace OXA {

bool operator==(const CoreStorage& a, const CoreStorage& b)
{
    return a.keep == b.keep && a.gapBits == b.gapBits && a.watch == b.watch && a.when == b.when
        && a.limit == b.limit;
}

std::vector<bool> watchedForChanges(const AoCore& core)
{
    const QStringList& watch = core.storage.watch;
    std::vector<bool> watched;
    for (const SignalItem& item : core.captureSignals) {
        const bool all = watch.isEmpty() || watch.contains(item.name);
        for (const QString& bit : flattenedNames({item}))
            watched.push_back(all || watch.contains(bit));
    }
    return watched;
}

QStringList unknownWatched(const AoCore& core)
{
    QStringList unknown = core.storage.watch;
    for (const SignalItem& item : core.captureSignals)
        unknown.removeAll(item.name);
    for (const QString& bit : core.dataSignals())
        unknown.removeAll(bit);
    return unknown;
}

}
