#ifndef APPS_OXA_EDITOR_EXPRESSION_MARKS_H
#define APPS_OXA_EDITOR_EXPRESSION_MARKS_H

#include "oxautils/model/ao_core.h"

/// A piece of an expression that is wrong.
struct ExpressionMark {
    int start;
    int length;
    QString text; ///< what is wrong with it
};

/// What can be pointed at in `text` as an expression of `core`, in its order.
QList<ExpressionMark> expressionMarks(const QString& text, const OXA::AoCore& core);

/// `text` as reading a file gives it: "match[3]" is M3, and letters are upper-case.
QString normalizedExpression(const QString& text);

#endif
