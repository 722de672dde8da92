// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/problem.h"

#include <QStringList>

#include <algorithm>

namespace OXA {

namespace {

// Errors with which an analyzer can be built and works.
constexpr const char* kBuilds[] = {
    "checksum", // the analyzer is built from the content
    "core-index", // the installed cores accept any
    "storage-depth", // and number of windows: memories of other sizes work
    "window-count",
    "short-window", // programs write the settings of the window when they arm
    "look-up-tables", // an estimate: synthesis decides
    "block-sram",
    "shadow-sram",
    "registers",
};

}

QString severityText(Severity severity)
{
    return severity == Severity::Error ? "error" : "warning";
}

QString Place::text() const
{
    QStringList parts;
    if (core >= 0)
        parts += QString("core %1").arg(core);
    if (port >= 0)
        parts += QString("T%1").arg(port);
    if (unit >= 0)
        parts += QString("M%1").arg(unit);
    if (expression >= 0)
        parts += QString("expression %1").arg(expression);
    if (events)
        parts += "events";
    if (storage)
        parts += "storage";
    if (parts.isEmpty() && line > 0)
        parts += QString("line %1").arg(line);
    return parts.join(", ");
}

bool stopsBuild(const Problem& problem)
{
    return problem.severity == Severity::Error
        && std::find(std::begin(kBuilds), std::end(kBuilds), problem.rule) == std::end(kBuilds);
}

}
