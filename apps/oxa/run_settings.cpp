// SPDX-License-Identifier: Apache-2.0
#include "run_settings.h"

#include "configuration_change.h"
#include "design_options.h"
#include "simulation_inputs.h"

#include <algorithm>

using namespace OXA_CAPTURE;

bool RunSettings::change() const
{
    return !changes.units.isEmpty() || !changes.expressions.isEmpty() || !changes.stores.isEmpty()
        || !changes.forcedBys.isEmpty()
        || std::any_of(changes.settings.begin(), changes.settings.end(),
            [](const QStringList& texts) { return !texts.isEmpty(); });
}

void addRunSettings(Command& command, RunSettings& settings)
{
    addCoreChanges(command, settings.changes, Changed::InRuns);
    command
        .text("--built-from", settings.builtFrom,
            "What the analyzer is built from, when FILE has changed since")
        .typeName("BUILT");
}

bool changeSettings(const RunSettings& settings, const QString& file,
    OXA::Configuration& configuration, TextOut& err)
{
    const QList<OXA::Problem> before = problemsOf(configuration);
    const DesignOptions design;
    CoreChanges changes = settings.changes;
    changes.valueNames = namedValues(design, file, {}, err);
    Messages messages;
    changeCores(changes, configuration, messages);
    if (!report(messages, err))
        return false;
    QList<OXA::Problem> errors;
    for (const OXA::Problem& problem : without(problemsOf(configuration), before)) {
        // Other rules are about what is built: the windows of a run may be any.
        const bool isOfRuns
            = problem.place.unit >= 0 || problem.place.expression >= 0 || problem.place.storage;
        if (problem.severity == OXA::Severity::Error && isOfRuns)
            errors += problem;
    }
    sayProblems(file, errors, err);
    return errors.isEmpty();
}
