// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_EXPRESSION_RULES_H
#define OXAUTILS_CHECK_EXPRESSION_RULES_H

#include "oxautils/check/rule.h"

namespace OXA {

// Rules about a trigger expression.
void findForeignCharacters(const Expression& expression, Findings& findings);
void findBlanks(const Expression& expression, Findings& findings);
void findUnknownUnits(const Expression& expression, Findings& findings);
void findDisabledUnits(const Expression& expression, Findings& findings);
void findParentheses(const Expression& expression, Findings& findings);
void findSyntax(const Expression& expression, Findings& findings);
void findConstant(const Expression& expression, Findings& findings);
void findLongExpression(const Expression& expression, Findings& findings);
void findHiddenUnits(const Expression& expression, Findings& findings);

}

#endif
