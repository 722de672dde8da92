#include "oxautils/check/problem.h"

#include <QStringList>

namespace OXA {

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
    if (parts.isEmpty() && line > 0)
        parts += QString("line %1").arg(line);
    return parts.join(", ");
}

}
