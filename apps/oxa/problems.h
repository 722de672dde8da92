#ifndef APPS_OXA_PROBLEMS_H
#define APPS_OXA_PROBLEMS_H

#include "text_out.h"

#include "oxautils/check/problem.h"
#include "oxautils/generate/oxa_arg.h"

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

/// Looks at the configuration of the request as `oxa check` does, before anything is written. False
/// when it finds what keeps an analyzer from being built; this is said on `err`, with what to do.
bool passesCheck(const OXA::OxaArg& arg, OtherProblems others, TextOut& err);

/// How many of `problems` are of `severity`.
int countOf(const QList<OXA::Problem>& problems, OXA::Severity severity);

#endif
