#include "oxautils/check/core_rules.h"

#include "oxautils/check/verilog_names.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/model/verilog_word.h"

#include <QSet>

#include <functional>

namespace OXA {

namespace {

using Complaint = std::function<QString(const QString&)>;

/// Says of every name in `names`, each once, what `complaint` says.
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

/// The same of all names that `core` puts into the wrapper.
void complainAbout(const AnyCore& core, const Complaint& complaint, Findings& findings)
{
    QSet<QString> seen {QString()}; // the clock's absence is another rule's
    complainAbout({core.clock}, core.place(), seen, complaint, findings);
    seen.remove(QString());
    complainAbout(core.data, core.place(), seen, complaint, findings);
    for (const TriggerPort* port : core.ports) {
        Place place = core.place();
        place.port = port->index;
        complainAbout(port->singleSignals(), place, seen, complaint, findings);
    }
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
                             : QString("\"%1\" holds characters that do not show").arg(shown);
    };
    complainAbout(
        core,
        // Of a name that is no identifier at all another rule tells.
        [complaint](const QString& name) { return wordFault(name) ? QString() : complaint(name); },
        findings);
    QSet<QString> seen;
    complainAbout(core.labels, core.place(), seen, complaint, findings);
}

void findWrapperNames(const AnyCore& core, Findings& findings)
{
    complainAbout(
        core,
        [](const QString& name) {
            return isWrapperName(name)
                ? QString("signal \"%1\" has a name that the analyzer's wrapper uses itself")
                      .arg(name)
                : QString();
        },
        findings);
}

}
