// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_EXPRESSION_MARKS_H
#define APPS_OXA_EDITOR_EXPRESSION_MARKS_H

#include "oxautils/model/ao_core.h"

/// An error in an expression and its position.
struct ExpressionMark {
    int start;
    int length;
    QString text;
};

/// The errors in `text`, an expression of `core`, in its order.
QList<ExpressionMark> expressionMarks(const QString& text, const OXA::AoCore& core);

/// What the marks say, in a line to show.
QString complaintText(const QList<ExpressionMark>& marks);

/// `text` as it is after reading a file: "match[3]" becomes M3, letters are upper-case.
QString normalizedExpression(const QString& text);

#endif
