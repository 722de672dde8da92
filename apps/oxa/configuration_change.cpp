// SPDX-License-Identifier: Apache-2.0
#include "configuration_change.h"

#include "problems.h"
#include "request.h"

#include "files/fail.h"
#include "oxautils/check/check.h"
#include "oxautils/config/parse_once.h"

#include <algorithm>

namespace {

/// Reports what the file `path` contains beside the cores that were read from it.
void reportLost(const QString& path, const QList<OXA::Problem>& problemsOfCores, TextOut& err)
{
    for (const OXA::Problem& problem : without(OXA::checkConfigFile(path), problemsOfCores)) {
        if (problem.rule != "checksum")
            sayWarning(path, problem, "; it is not kept", err);
    }
}

}

bool ConfigurationChange::read(const QString& path, TextOut& err)
{
    const OXA::ParseOnce once;
    if (!readConfiguration(path, configuration, err))
        return false;
    before = problemsOf(configuration);
    reportLost(path, before, err);
    for (OXA::AoCore* core : qAsConst(configuration.cores))
        OXA::adoptMarkedPorts(*core);
    return true;
}

QList<OXA::Problem> ConfigurationChange::newProblems() const
{
    return without(problemsOf(configuration), before);
}

bool ConfigurationChange::write(
    const QString& path, const QList<OXA::Problem>& problems, QString* error) const
{
    if (countOf(problems, OXA::Severity::Error) == 0)
        return OXA::writeConfiguration(path, configuration, error);
    return OXA::fail(error, path + ": not written, because of these new errors");
}

QList<OXA::Problem> problemsOf(const OXA::Configuration& configuration)
{
    return configuration.mode == OXA::Lite ? OXA::checkCores(configuration.liteCores)
                                           : OXA::checkCores(configuration.cores);
}

QList<OXA::Problem> without(const QList<OXA::Problem>& problems, const QList<OXA::Problem>& others)
{
    QList<OXA::Problem> added;
    for (const OXA::Problem& problem : problems) {
        const auto isSame = [&problem](const OXA::Problem& other) {
            return problem.rule == other.rule && problem.text == other.text
                && problem.place.core == other.place.core && problem.place.unit == other.place.unit
                && problem.place.port == other.place.port;
        };
        if (std::none_of(others.begin(), others.end(), isSame))
            added += problem;
    }
    return added;
}

void sayProblems(const QString& path, const QList<OXA::Problem>& problems, TextOut& err)
{
    for (const OXA::Problem& problem : problems) {
        err << problemLine(path, problem) << '\n';
        if (problem.severity == OXA::Severity::Error)
            err << "    " << problem.hint << '\n';
    }
}
