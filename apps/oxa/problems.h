// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_PROBLEMS_H
#define APPS_OXA_PROBLEMS_H

#include "text_out.h"

#include "oxautils/check/problem.h"

#include <QJsonObject>
#include <QList>

/// "FILE:LINE:COLUMN: SEVERITY: PLACE: TEXT [RULE]", without the fields that the problem does not
/// have. `severity` replaces the problem's own.
QString problemLine(const QString& file, const OXA::Problem& problem, const QString& severity = {});

/// The problem with every field, for programs.
QJsonObject problemJson(const OXA::Problem& problem);

/// Prints the problem to `err` as a warning, and `more` behind it.
void sayWarning(
    const QString& file, const OXA::Problem& problem, const QString& more, TextOut& err);

/// What to do with problems that do not prevent building the analyzer.
enum class OtherProblems {
    NotSaid,
    Warnings,
    Stop,
};

/// Prints to `err` the `problems` that prevent building an analyzer from `file`, with what to do;
/// false when there are any.
bool passesCheck(
    const QString& file, const QList<OXA::Problem>& problems, OtherProblems others, TextOut& err);

/// The number of `problems` of this severity.
int countOf(const QList<OXA::Problem>& problems, OXA::Severity severity);

#endif
