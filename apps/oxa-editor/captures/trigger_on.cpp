// SPDX-License-Identifier: Apache-2.0
#include "trigger_on.h"

#include "files/fail.h"

#include <QCoreApplication>

#include <algorithm>

using namespace OXA;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("TriggerOn", text); }

/// The digits of a unit that compares `port`: X for other signals. Empty when the port lacks one.
QString digitsFor(const TriggerPort& port, const TriggerValue& value)
{
    const QStringList names = flattenedNames(port.signalList);
    const QStringList texts = flattenedTexts(port.signalList);
    QString digits(names.size(), 'X');
    for (int i = 0; i < value.signalNames.size(); ++i) {
        const QString& wanted = value.signalNames.at(i);
        const int byText = texts.indexOf(wanted);
        const int place = byText >= 0 ? byText : names.indexOf(wanted);
        if (place < 0)
            return {};
        digits[place] = value.digits.at(i);
    }
    return digits;
}

}

bool unitOn(const AoCore& core, const TriggerValue& value, MatchUnit& unit, QString* error)
{
    TriggerPort* port = nullptr;
    QString digits;
    for (TriggerPort* own : core.availableTriggers()) {
        digits = digitsFor(*own, value);
        if (digits.isEmpty())
            continue;
        port = own;
        const auto used = std::find_if(
            core.matchUnits.begin(), core.matchUnits.end(), [&](const MatchUnit* one) {
                return one->enabled && one->trigger == own
                    && (!value.hasEdge() || matchTypeHasEdges(one->matchType));
            });
        if (used == core.matchUnits.end())
            continue;
        unit = **used;
        unit.matchFunc = MatchEqual;
        unit.value0 = digits;
        return true;
    }
    if (!port)
        return OXA::fail(error, tr("no trigger port has the signal"));
    const auto unused = std::find_if(core.matchUnits.begin(), core.matchUnits.end(),
        [](const MatchUnit* one) { return !one->enabled; });
    if (unused == core.matchUnits.end())
        return OXA::fail(error, tr("all match units are used"));
    unit = **unused;
    unit.enabled = true;
    unit.trigger = port;
    unit.matchType = value.hasEdge() ? MatchBasicEdges : MatchBasic;
    unit.matchFunc = MatchEqual;
    unit.value0 = digitsFor(*port, value);
    unit.value1 = QString(unit.value0.size(), '0');
    unit.counterEnable = false;
    return true;
}
