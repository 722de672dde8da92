// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/core_rules.h"

#include <QHash>
#include <QSet>

namespace OXA {

namespace {

constexpr int kMostNames = 3; // in a text

QString listed(const QStringList& names)
{
    const QString list = "\"" + names.mid(0, kMostNames).join("\", \"") + "\"";
    const int more = names.size() - kMostNames;
    return more > 0 ? list + QString(" and %1 more").arg(more) : list;
}

/// Those of `names` that occur more than once, each once.
QStringList repeatedOf(const QStringList& names)
{
    QHash<QString, int> counts;
    QStringList repeated;
    for (const QString& name : names) {
        if (++counts[name] == 2)
            repeated += name;
    }
    return repeated;
}

}

void findNoCores(const AllCores& configuration, Findings& findings)
{
    if (configuration.cores.isEmpty())
        findings.add({}, "there is no core, so there is nothing to build");
}

void findTooManyCores(const AllCores& configuration, Findings& findings)
{
    const int count = configuration.cores.size();
    if (count > kMostCores && !configuration.cores.first().lite)
        findings.add(configuration.cores.at(kMostCores).place(),
            QString("there are %1 cores, an analyzer has %2 at most")
                .arg(QString::number(count), QString::number(kMostCores)));
}

void findUnbuiltCores(const AllCores& configuration, Findings& findings)
{
    for (int i = 1; i < configuration.cores.size() && configuration.cores.first().lite; ++i)
        findings.add(configuration.cores.at(i).place(),
            "it is not built: only the first core of a Lite configuration is");
}

void findSharedSignals(const AllCores& configuration, Findings& findings)
{
    QHash<QString, int> sampledBy; // the first core that samples it
    for (const AnyCore& core : configuration.cores) {
        QStringList shared;
        int other = 0;
        for (const QString& name : core.data) {
            const auto first = sampledBy.constFind(name);
            if (first == sampledBy.constEnd())
                sampledBy.insert(name, core.position);
            else if (configuration.cores.at(*first).clock != core.clock) {
                other = *first;
                shared += name;
            }
        }
        if (!shared.isEmpty())
            findings.add(core.place(),
                QString("it samples %1 with clock \"%2\", core %4 with clock \"%3\"")
                    .arg(listed(shared), core.clock, configuration.cores.at(other).clock,
                        QString::number(other)));
    }
}

void findCoreIndex(const AnyCore& core, Findings& findings)
{
    if (!core.lite && core.index != core.position)
        findings.add(core.place(),
            QString("its index is %1, its position %2; the sources of position %2 do not have the "
                    "names that index %1 generates")
                .arg(QString::number(core.index), QString::number(core.position)));
}

void findNoClock(const AnyCore& core, Findings& findings)
{
    if (core.clock.isEmpty())
        findings.add(core.place(), "it has no sample clock");
}

void findSamplingEdge(const AnyCore& core, Findings& findings)
{
    if (core.trigType != 0 && core.trigType != 1)
        findings.add(core.place(),
            QString("its sampling edge is %1, neither 0 (rising) nor 1 (falling)")
                .arg(core.trigType));
}

void findMemoryKind(const AnyCore& core, Findings& findings)
{
    const bool known = core.implementation == BlockSram || core.implementation == ShadowSram
        || (core.implementation == Registers && !core.lite);
    if (!known)
        findings.add(core.place(),
            QString("its memory is of kind %1, which %2")
                .arg(QString::number(core.implementation),
                    core.lite ? "Lite cores do not have" : "does not exist"));
}

void findNoData(const AnyCore& core, Findings& findings)
{
    if (core.data.isEmpty())
        findings.add(core.place(), "it captures no signal");
}

void findRepeatedSignals(const AnyCore& core, Findings& findings)
{
    const QStringList data = repeatedOf(core.data);
    if (!data.isEmpty())
        findings.add(core.place(), "it captures more than once " + listed(data));
    for (const TriggerPort* port : core.ports) {
        const QStringList watched = repeatedOf(port->singleSignals());
        Place place = core.place();
        place.port = port->index;
        if (!watched.isEmpty())
            findings.add(place, "it watches more than once " + listed(watched));
    }
}

void findSampledClock(const AnyCore& core, Findings& findings)
{
    if (!core.clock.isEmpty() && core.data.contains(core.clock))
        findings.add(core.place(),
            QString("it samples \"%1\" with itself, which always gives the same").arg(core.clock));
}

}
