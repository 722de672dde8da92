// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/events_text.h"

#include "files/fail.h"

#include <QStringList>

#include <algorithm>

namespace OXA {

namespace {

constexpr char kNone[] = "none"; // no core

/// Reads the cores behind the "=".
bool readForcing(const QString& text, int coreCount, int core, QList<int>& forcing, QString* error)
{
    if (text.trimmed() == kNone)
        return true;
    for (const QString& part : text.split(',')) {
        int other = -1;
        if (part.trimmed().isEmpty())
            return fail(error, "write the cores that force it, as in 1=0,2, or \"none\"");
        if (!corePlaceFromText(part.trimmed(), coreCount, other, error))
            return false;
        if (other == core)
            return fail(error, QString("core %1 cannot force itself").arg(core));
        if (forcing.contains(other))
            return fail(error, QString("core %1 is there twice").arg(other));
        forcing += other;
    }
    std::sort(forcing.begin(), forcing.end());
    return true;
}

/// The places of the cores that force `core`, and the indexes that no other core has.
QString forcingText(const QList<AoCore*>& cores, const AoCore& core)
{
    const QList<int> places = forcingPlaces(cores, core);
    QList<int> unknown = core.events.forcedBy;
    for (const int place : places)
        unknown.removeAll(cores.at(place)->index);
    QStringList parts;
    if (!places.isEmpty())
        parts += forcedByText(places);
    if (!unknown.isEmpty())
        parts += "unknown index " + indexesText(unknown);
    return parts.join(" and ");
}

}

bool corePlaceFromText(const QString& text, int coreCount, int& core, QString* error)
{
    if (coreCount == 0)
        return fail(error, "the configuration has no core");
    if (text.isEmpty() && coreCount > 1)
        return fail(error,
            QString("there are %1 cores; write the core first, 0 to %2")
                .arg(QString::number(coreCount), QString::number(coreCount - 1)));
    bool ok = true;
    const int place = text.isEmpty() ? 0 : text.toInt(&ok);
    if (!ok || place < 0 || place >= coreCount)
        return fail(error,
            QString("there is no core %1; the last is %2")
                .arg(text, QString::number(coreCount - 1)));
    core = place;
    return true;
}

bool forcedByFromText(
    const QString& text, int coreCount, int& core, QList<int>& forcing, QString* error)
{
    const int equals = text.indexOf('=');
    int place = 0;
    QList<int> places;
    if (!corePlaceFromText(text.left(qMax(equals, 0)).trimmed(), coreCount, place, error)
        || !readForcing(text.mid(equals + 1), coreCount, place, places, error))
        return false;
    core = place;
    forcing = places;
    return true;
}

QString forcedByText(const QList<int>& forcing)
{
    QStringList texts;
    for (const int place : forcing)
        texts += QString::number(place);
    return texts.isEmpty() ? QString(kNone) : texts.join(',');
}

QString eventsText(const QList<AoCore*>& cores, const AoCore& core)
{
    QStringList parts;
    if (!core.events.forcedBy.isEmpty())
        parts += "forced by " + forcingText(cores, core);
    if (core.events.triggerOut)
        parts += "trigger out";
    if (core.events.stamps)
        parts += "stamps";
    return parts.join("; ");
}

}
