// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/core_rules.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kMostUnknown = 20; // indexes of a core that are reported

/// The cores that force `middle`, except `forced` and those that force it.
QStringList notPassedOn(const AllCores& configuration, int forced, int middle)
{
    const QList<int> forcing = configuration.cores.at(forced).forcing + QList<int> {forced};
    QStringList cores;
    for (const int first : configuration.cores.at(middle).forcing) {
        if (!forcing.contains(first))
            cores += QString("core %1").arg(first);
    }
    return cores;
}

}

void findForcingCores(const AllCores& configuration, Findings& findings)
{
    QHash<int, int> counts; // of cores that have an index
    for (const AnyCore& core : configuration.cores)
        ++counts[core.index];
    for (const AnyCore& core : configuration.cores) {
        QList<int> unknown;
        for (const int index : core.events.forcedBy) {
            if (counts.value(index) == (index == core.index ? 1 : 0))
                unknown += index;
        }
        for (const int index : unknown.mid(0, kMostUnknown))
            findings.add(core.eventsPlace(),
                index == core.index
                    ? QString("it forces itself")
                    : QString("it is forced by index %1, which no core has").arg(index));
    }
}

void findForcedChains(const AllCores& configuration, Findings& findings)
{
    for (const AnyCore& core : configuration.cores) {
        for (const int middle : core.forcing) {
            const QStringList lost = notPassedOn(configuration, core.position, middle);
            if (!lost.isEmpty())
                findings.add(core.eventsPlace(),
                    QString("core %1 forces it at its own triggers, not when %2 forces core %1")
                        .arg(QString::number(middle), lost.join(" or ")));
        }
    }
}

void findNoExpression(const AllCores& configuration, Findings& findings)
{
    if (configuration.cores.size() > kMostCores)
        return; // another rule reports that
    for (const AnyCore& core : configuration.cores) {
        if (core.lite || core.hasExpressions)
            continue;
        if (core.forcing.isEmpty())
            findings.add(core.place(), "it has no trigger expression, so only force triggers it");
        else if (std::none_of(core.forcing.begin(), core.forcing.end(),
                     [&](int place) { return configuration.cores.at(place).hasExpressions; }))
            findings.add(core.place(),
                "it has no trigger expression, and the cores that force it have none either, so "
                "only force by a program triggers it");
    }
}

}
