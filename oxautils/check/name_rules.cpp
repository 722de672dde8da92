// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/core_rules.h"

#include "oxautils/check/verilog_names.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/model/verilog_word.h"

#include <QSet>

#include <functional>

namespace OXA {

namespace {

using Complaint = std::function<QString(const QString&)>;

/// Adds the complaint about each of `names`, each name once.
void complainAbout(const QStringList& names, const Place& place, QSet<QString>& seen,
    const Complaint& complaint, Findings& findings)
{
    for (const QString& name : names) {
        const QString text = seen.contains(name) ? QString() : complaint(name);
        seen << name;
        if (!text.isEmpty())
            findings.add(place, text);
    }
}

/// The same for all names of `core` in the wrapper.
void complainAbout(const AnyCore& core, const Complaint& complaint, Findings& findings)
{
    QSet<QString> seen {QString()}; // another rule reports a missing clock
    complainAbout({core.clock}, core.place(), seen, complaint, findings);
    seen.remove(QString());
    complainAbout(core.data, core.place(), seen, complaint, findings);
    for (const TriggerPort* port : core.ports) {
        Place place = core.place();
        place.port = port->index;
        complainAbout(port->singleSignals(), place, seen, complaint, findings);
    }
}

/// The wrapper's names that only these cores' events make: outputs and wires between cores.
QSet<QString> eventNames(const AllCores& configuration)
{
    QSet<int> forcing; // indexes
    for (const AnyCore& core : configuration.cores)
        forcing += QSet<int>(core.events.forcedBy.begin(), core.events.forcedBy.end());
    QSet<QString> names;
    for (const AnyCore& core : configuration.cores) {
        if (core.events.triggerOut)
            names += triggerOutput(core.position);
        if (forcing.contains(core.index))
            names += pulseNet(core.position);
    }
    return names;
}

}

void findUnusableNames(const AnyCore& core, Findings& findings)
{
    complainAbout(core, nameComplaint, findings);
}

void findHiddenCharacters(const AnyCore& core, Findings& findings)
{
    const auto complaint = [](const QString& text) {
        const QString shown = shownText(text);
        return shown == text ? QString()
                             : QString("\"%1\" contains invisible characters").arg(shown);
    };
    complainAbout(
        core,
        // Another rule reports names that are not identifiers.
        [complaint](const QString& name) { return wordFault(name) ? QString() : complaint(name); },
        findings);
    QSet<QString> seen;
    complainAbout(core.labels, core.place(), seen, complaint, findings);
}

void findWrapperNames(const AllCores& configuration, Findings& findings)
{
    const QSet<QString> ofEvents = eventNames(configuration);
    const auto complaint = [&ofEvents](const QString& name) {
        return isWrapperName(name) || ofEvents.contains(name)
            ? QString("signal \"%1\" has a name that the analyzer's wrapper uses itself").arg(name)
            : QString();
    };
    for (const AnyCore& core : configuration.cores)
        complainAbout(core, complaint, findings);
}

}
