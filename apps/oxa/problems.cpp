// SPDX-License-Identifier: Apache-2.0
#include "problems.h"

#include <algorithm>

QString problemLine(const QString& file, const OXA::Problem& problem, const QString& severity)
{
    QString where = file;
    if (problem.place.line > 0)
        where += QString(":%1:%2").arg(
            QString::number(problem.place.line), QString::number(problem.place.column));
    QStringList parts {where, severity.isEmpty() ? severityText(problem.severity) : severity};
    if (problem.place.core >= 0)
        parts += problem.place.text();
    parts += problem.text;
    return parts.join(": ") + " [" + problem.rule + "]";
}

QJsonObject problemJson(const OXA::Problem& problem)
{
    QJsonObject object {
        {"rule",     problem.rule                  },
        {"severity", severityText(problem.severity)},
        {"place",    problem.place.text()          },
        {"text",     problem.text                  },
        {"hint",     problem.hint                  }
    };
    const auto add = [&object](const char* name, int number, int none) {
        if (number != none)
            object.insert(name, number);
    };
    add("core", problem.place.core, -1);
    add("port", problem.place.port, -1);
    add("unit", problem.place.unit, -1);
    add("expression", problem.place.expression, -1);
    add("line", problem.place.line, 0);
    add("column", problem.place.column, 0);
    return object;
}

// The problem as one of the messages about the run.
static QJsonObject messageOf(const QString& file, const OXA::Problem& problem)
{
    const QString place = problem.place.text();
    QJsonObject message {
        {"message", place.isEmpty() ? problem.text : place + ": " + problem.text},
        {"file",    file                                                        },
        {"rule",    problem.rule                                                },
        {"hint",    problem.hint                                                },
    };
    if (problem.place.line > 0) {
        message.insert("line", problem.place.line);
        message.insert("column", problem.place.column);
    }
    return message;
}

void sayWarning(const QString& file, const OXA::Problem& problem, const QString& more, TextOut& err)
{
    err << problemLine(file, problem, "warning") << more << '\n';
    err.recordWarning(messageOf(file, problem));
}

bool passesCheck(
    const QString& file, const QList<OXA::Problem>& problems, OtherProblems others, TextOut& err)
{
    bool passes = true;
    for (const OXA::Problem& problem : problems) {
        if (others == OtherProblems::Stop || stopsBuild(problem)) {
            passes = false;
            err << problemLine(file, problem, "error") << "\n    " << problem.hint << '\n';
            err.recordError(messageOf(file, problem));
        } else if (others == OtherProblems::Warnings) {
            sayWarning(file, problem, {}, err);
        }
    }
    if (!passes)
        err << "error: nothing was generated from " << file << '\n';
    return passes;
}

int countOf(const QList<OXA::Problem>& problems, OXA::Severity severity)
{
    return int(std::count_if(problems.begin(), problems.end(),
        [severity](const OXA::Problem& problem) { return problem.severity == severity; }));
}
