// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/numbered_path.h"

#include <QRegularExpression>

namespace OXA_CAPTURE {

static const QRegularExpression& place()
{
    static const QRegularExpression form("%(?:0(\\d))?d");
    return form;
}

bool isNumbered(const QString& pattern) { return pattern.count(place()) == 1; }

QString numberedPath(const QString& pattern, qint64 number)
{
    const auto match = place().match(pattern);
    if (!isNumbered(pattern))
        return pattern;
    const QString digits
        = QString::number(number).rightJustified(match.captured(1).toInt(), QLatin1Char('0'));
    return QString(pattern).replace(match.capturedStart(), match.capturedLength(), digits);
}

}
