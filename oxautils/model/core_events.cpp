// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/core_events.h"

#include "oxautils/model/ao_core.h"

#include <algorithm>

namespace OXA {

bool operator==(const CoreEvents& a, const CoreEvents& b)
{
    return a.forcedBy == b.forcedBy && a.triggerOut == b.triggerOut && a.stamps == b.stamps;
}

QString indexesText(const QList<int>& indexes)
{
    QStringList words;
    for (const int index : indexes)
        words += QString::number(index);
    return words.join(' ');
}

QList<int> indexesFromText(const QString& text, QStringList* unreadable)
{
    QList<int> indexes;
    for (const QString& word : text.simplified().split(' ', Qt::SkipEmptyParts)) {
        bool ok = false;
        const int index = word.toInt(&ok);
        if (ok)
            indexes += index;
        else if (unreadable)
            *unreadable += word;
    }
    std::sort(indexes.begin(), indexes.end());
    indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
    return indexes;
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

void setForcingPlaces(const QList<AoCore*>& cores, AoCore& core, const QList<int>& forcing)
{
    core.events.forcedBy.clear();
    for (const int place : forcing)
        core.events.forcedBy += cores.at(place)->index;
    std::sort(core.events.forcedBy.begin(), core.events.forcedBy.end());
}

bool forcesOthers(const QList<AoCore*>& cores, const AoCore& core)
{
    return std::any_of(cores.begin(), cores.end(), [&core](const AoCore* other) {
        return other != &core && other->events.forcedBy.contains(core.index);
    });
}

QString triggerOutput(int place) { return QString("trigger%1_o").arg(place); }

QStringList triggerOutputs(const QList<AoCore*>& cores)
{
    QStringList names;
    for (int place = 0; place < cores.size(); ++place) {
        if (cores.at(place)->events.triggerOut)
            names += triggerOutput(place);
    }
    return names;
}

QString pulseNet(int place) { return QString("pulse%1").arg(place); }

}
