// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/core_rules.h"

#include <QRegularExpression>

namespace OXA {

namespace {

/// The name of a bit of a bus.
struct BusBit {
    QString bus; ///< empty for other names
    int number = 0;
};

BusBit busBit(const QString& name)
{
    static const QRegularExpression bit("^(.*)\\[(\\d{1,9})\\] ?$");
    const auto match = bit.match(name);
    return {match.captured(1), match.captured(2).toInt()};
}

/// The error in the order of a bus's bits; empty when there is none.
QString orderComplaint(const SignalItem& bus)
{
    bool reversed = bus.subItems.size() > 1;
    QString complaint;
    for (int i = 1; i < bus.subItems.size(); ++i) {
        const BusBit before = busBit(bus.subItems.at(i - 1).name);
        const BusBit bit = busBit(bus.subItems.at(i).name);
        const bool together = !bit.bus.isEmpty() && bit.bus == before.bus;
        reversed = reversed && together && bit.number == before.number + 1;
        if (complaint.isEmpty() && together && bit.number != before.number - 1)
            complaint = QString("in bus \"%1\", \"%2\" follows \"%3\"")
                            .arg(bus.name, bus.subItems.at(i).name, bus.subItems.at(i - 1).name);
    }
    return reversed ? QString("the bits of bus \"%1\" ascend, so that \"%2\" is its most "
                              "significant")
                          .arg(bus.name, bus.subItems.first().name)
                    : complaint;
}

void findOrder(const QList<SignalItem>& items, const Place& place, Findings& findings)
{
    for (const SignalItem& item : items) {
        const QString complaint = orderComplaint(item);
        if (!complaint.isEmpty())
            findings.add(place, complaint);
    }
}

void findRanges(const QStringList& names, const Place& place, Findings& findings)
{
    static const QRegularExpression range("\\[(\\d+):(\\d+)\\] ?$");
    for (const QString& name : names) {
        const auto match = range.match(name);
        if (match.hasMatch() && match.captured(1) != match.captured(2))
            findings.add(place, QString("\"%1\" is a range, but represents one bit").arg(name));
    }
}

Place placeOf(const AnyCore& core, const TriggerPort& port)
{
    Place place = core.place();
    place.port = port.index;
    return place;
}

}

void findBusOrder(const AnyCore& core, Findings& findings)
{
    findOrder(core.items, core.place(), findings);
    for (const TriggerPort* port : core.ports)
        findOrder(port->signalList, placeOf(core, *port), findings);
}

void findRangesAsBits(const AnyCore& core, Findings& findings)
{
    findRanges(QStringList(core.clock) + flattenedNames(core.items), core.place(), findings);
    for (const TriggerPort* port : core.ports)
        findRanges(port->singleSignals(), placeOf(core, *port), findings);
}

}
