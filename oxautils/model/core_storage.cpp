// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/core_storage.h"

#include "oxautils/model/ao_core.h"
#include "oxautils/model/signal_item.h"

#include <QRegularExpression>

#include <algorithm>

namespace OXA {

int CoreStorage::extraBits() const
{
    return isDefault() ? 0 : std::clamp(gapBits, 0, kMostGapBits) + (limit > 0 ? 1 : 0);
}

bool operator==(const CoreStorage& a, const CoreStorage& b)
{
    return a.keep == b.keep && a.gapBits == b.gapBits && a.watch == b.watch && a.when == b.when
        && a.limit == b.limit;
}

QString watchText(const QStringList& names) { return names.join(' '); }

QStringList watchFromText(const QString& text)
{
    static const QRegularExpression form("\\S+");
    QStringList names;
    for (auto match = form.globalMatch(text); match.hasNext();) {
        const QString name = match.next().captured();
        names += name.startsWith('\\') ? name + ' ' : name;
    }
    return names;
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

QStringList watchableNames(const AoCore& core)
{
    QStringList names;
    for (const SignalItem& item : core.captureSignals)
        names += item.name;
    names += core.dataSignals();
    names.removeDuplicates();
    return names;
}

}
