#ifndef APPS_OXA_PROBLEMS_H
#define APPS_OXA_PROBLEMS_H

#include "text_out.h"

#include "oxautils/check/problem.h"

#include <QJsonObject>
#include <QList>

/// "FILE:LINE:COLUMN: SEVERITY: PLACE: TEXT [RULE]", without what a problem does not have. With
/// `severity` that one instead of the problem's own.
QString problemLine(const QString& file, const OXA::Problem& problem, const QString& severity = {});

/// The problem with every field, for programs.
QJsonObject problemJson(const OXA::Problem& problem);

/// What becomes of problems with which an analyzer could be built all the same.
enum class OtherProblems {
    NotSaid,
    Warnings,
    Stop,
};

/// Says on `err` what of `problems` keeps an analyzer from being built from `file`, with what to
/// do; false when there is such a problem.
bool passesCheck(
    const QString& file, const QList<OXA::Problem>& problems, OtherProblems others, TextOut& err);

/// How many of `problems` are of `severity`.
int countOf(const QList<OXA::Problem>& problems, OXA::Severity severity);

#endif
