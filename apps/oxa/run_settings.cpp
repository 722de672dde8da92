// SPDX-License-Identifier: Apache-2.0
#include "run_settings.h"

#include "files/fail.h"
#include "oxautils/check/check.h"

#include <QRegularExpression>

using namespace OXA_CAPTURE;

namespace {

// The unit that `text` begins with ("M3=...") in the one core that has it enabled; null, with the
// reason in `error`, when there is none.
OXA::MatchUnit* unitOf(const QString& text, const QList<OXA::AoCore*>& cores, QString* error)
{
    static const QRegularExpression name("^M(\\d{1,2})=");
    const auto match = name.match(text);
    OXA::MatchUnit* found = nullptr;
    int count = 0;
    for (OXA::AoCore* core : cores) {
        OXA::MatchUnit* unit
            = match.hasMatch() ? core->matchUnit(match.captured(1).toInt()) : nullptr;
        if (unit && unit->enabled) {
            found = unit;
            ++count;
        }
    }
    if (count == 1)
        return found;
    OXA::fail(error,
        !match.hasMatch() ? "write it like M3=10XR"
            : count == 0  ? "no core that runs has this match unit"
                          : "several cores have this match unit; choose one of them with --core");
    return nullptr;
}

QStringList complaintsOf(const QList<OXA::AoCore*>& cores, const OXA::MatchUnit& unit)
{
    QStringList texts;
    for (const OXA::Problem& problem : OXA::checkCores(cores)) {
        if (problem.place.unit == unit.index && cores.value(problem.place.core) == unit.core)
            texts += problem.text;
    }
    return texts;
}

// Sets a value's characters, or a range's two bounds; returns the error.
QString setValues(OXA::MatchUnit& unit, const QString& text)
{
    const QStringList values = text.toUpper().split("..");
    const bool range = OXA::isRangeFunction(unit.matchFunc);
    if (values.size() != (range ? 2 : 1))
        return range ? "the unit compares with a range, as in M3=0010..0111"
                     : "the unit compares with one value, as in M3=10XR";
    unit.value0 = values.first();
    if (range)
        unit.value1 = values.last();
    return {};
}

QString setCounter(OXA::MatchUnit& unit, const QString& text)
{
    bool ok = false;
    unit.counter = text.toInt(&ok);
    return ok ? QString() : QString("\"%1\" is not a number that a counter can count to").arg(text);
}

void change(const char* option, const QStringList& texts,
    QString (*set)(OXA::MatchUnit& unit, const QString& text), const QList<OXA::AoCore*>& cores,
    Messages& problems)
{
    for (const QString& text : texts) {
        const QString place = QString(option) + ' ' + text;
        QString error;
        OXA::MatchUnit* unit = unitOf(text, cores, &error);
        if (!unit) {
            problems.append({place, error});
            continue;
        }
        const QStringList before = complaintsOf(cores, *unit);
        const QString refusal = set(*unit, text.section('=', 1));
        if (!refusal.isEmpty()) {
            problems.append({place, refusal});
            continue;
        }
        for (const QString& complaint : complaintsOf(cores, *unit)) {
            if (!before.contains(complaint))
                problems.append({place, complaint});
        }
    }
}

}

void changeUnits(const RunSettings& settings, const QList<OXA::AoCore*>& cores, Messages& problems)
{
    change("--unit", settings.units, setValues, cores, problems);
    change("--counter", settings.counters, setCounter, cores, problems);
    for (const QString& text : settings.counters) {
        const OXA::MatchUnit* unit = unitOf(text, cores, nullptr);
        if (unit && !unit->counterEnable)
            problems.append({"--counter " + text, "the unit was built without a counter"});
    }
}

void changeWindows(const RunSettings& settings, TriggerSetup& setup)
{
    if (settings.samples > 0) {
        // Keep the trigger position, up to the last sample of the window.
        setup.triggerPos = std::min(setup.triggerPos, settings.samples - 1);
        setup.captureAmount = settings.samples;
    }
    if (settings.windows > 0)
        setup.windowNum = settings.windows;
    if (settings.position >= 0)
        setup.triggerPos = settings.position;
}
