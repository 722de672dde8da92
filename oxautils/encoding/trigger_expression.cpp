// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/trigger_expression.h"

#include "oxautils/encoding/truth_table.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/log_categories.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace OXA {

namespace {

bool isLetter(char c) { return c >= 'A' && c <= 'Z'; }

QString unitName(int number) { return 'M' + QString::number(number); }

/// Pops the operands of `calcuate`; false when the stack has too few.
bool apply(char symbol, std::string& stack)
{
    const size_t taken = symbol == '!' ? 1 : 2;
    if (stack.size() < taken)
        return false;
    const bool right = stack.back() == '1';
    if (taken == 2)
        stack.pop_back();
    const bool left = stack.back() == '1';
    const bool result = symbol == '!' ? !right
        : symbol == '&'               ? left && right
        : symbol == '|'               ? left || right
                                      : left != right;
    stack.back() = result ? '1' : '0';
    return true;
}

void writeTable(QTextStream& out, const QString& name, const TruthTable& table)
{
    constexpr int kLeastRows = 4;
    const int rows = table.rows() == 2 ? kLeastRows : table.rows();
    out << "parameter " << name << "_INIT = " << rows << "'h" << tableDigits(table) << ';'
        << Qt::endl;
}

}

void getAllMatchEnbale(AoCore* core, std::vector<bool>& enables)
{
    if (!core)
        return;
    for (const MatchUnit* unit : qAsConst(core->matchUnits))
        enables.push_back(unit->enabled);
}

void generateExpression(AoCore* core, QTextStream& out)
{
    if (!core || core->expressionType == StaticExpressions)
        return;
    const std::vector<bool> enables = unitSwitches(*core);
    for (int i = 0; i < core->expressions.size(); ++i) {
        const TruthTable table = compileExpression(core->expressions.at(i), enables);
        if (!table.legal)
            qCCritical(logEncoding).noquote().nospace()
                << "core " << core->index << ": expression " << i << " \""
                << core->expressions.at(i)
                << "\" contains more than unit names, the operators ! & ^ | and parentheses";
        writeTable(out, QString("EXPRESSION%1").arg(i), table);
    }
    for (int i = core->expressions.size(); i < kMostExpressions; ++i)
        out << "parameter EXPRESSION" << i << "_INIT = 16'h0000;" << Qt::endl;
    if (core->storage.keep == CoreStorage::When)
        writeTable(out, "WHEN", compileExpression(core->storage.when, enables));
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link against this signature.
QString logicTruthTable(QString exp, std::vector<bool> enables)
{
    return tableText(compileExpression(std::move(exp), enables));
}

void resetLogicExp(QString& exp, std::vector<bool>& enables)
{
    for (int i = kUnits - 1; i >= 0; --i) {
        // The format's rule: found anywhere in the text, so "M10" hides a missing "M1".
        if (exp.contains(unitName(i)))
            enables.at(size_t(i)) = false;
        else if (enables.at(size_t(i)))
            exp += '|' + unitName(i);
    }
}

QString changeExpItem(QString exp)
{
    char letter = 'A';
    for (int i = kUnits - 1; i >= 0; --i) {
        if (exp.contains(unitName(i)))
            exp.replace(unitName(i), QString(QChar(letter++)));
    }
    return exp;
}

void translet(const char* infix, char* postfix)
{
    std::string operators;
    const auto output = [&] {
        *postfix++ = operators.back();
        operators.pop_back();
    };
    for (; *infix; ++infix) {
        const char c = *infix;
        if (isLetter(c)) {
            *postfix++ = c;
        } else if (operators.empty() || c == '(') {
            operators.push_back(c);
        } else if (c == ')') {
            while (!operators.empty() && operators.back() != '(')
                output();
            if (!operators.empty())
                operators.pop_back();
        } else {
            while (!operators.empty() && priority(c) <= priority(operators.back()))
                output();
            operators.push_back(c);
        }
    }
    while (!operators.empty())
        output();
    *postfix = '\0';
}

int priority(char c)
{
    switch (c) {
    case '!':
        return 4;
    case '&':
        return 3;
    case '^':
        return 2;
    case '|':
        return 1;
    default:
        return 0;
    }
}

void getOperand(const char* postfix, char* operands)
{
    bool seen[26] = {};
    for (; *postfix; ++postfix) {
        if (!isLetter(*postfix) || seen[*postfix - 'A'])
            continue;
        seen[*postfix - 'A'] = true;
        *operands++ = *postfix;
    }
    *operands = '\0';
}

void sort(char* s) { std::sort(s, s + std::strlen(s)); }

void itoa(int value, char* buf, int radix)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    if (radix < 2 || radix > 16) {
        *buf = '\0';
        return;
    }
    const bool negative = value < 0 && radix == 10;
    unsigned rest = negative ? 0u - unsigned(value) : unsigned(value);
    std::string digits;
    do {
        digits += kDigits[rest % unsigned(radix)];
        rest /= unsigned(radix);
    } while (rest);
    if (negative)
        digits += '-';
    std::reverse_copy(digits.begin(), digits.end(), buf);
    buf[digits.size()] = '\0';
}

void resetBitDataIn(char* bits, std::vector<bool> enabled, std::vector<bool> added)
{
    const size_t count = std::strlen(bits);
    size_t place = 0;
    for (size_t i = enabled.size(); i-- > 0;) {
        if (!enabled[i])
            continue;
        if (place < count && i < added.size() && added[i])
            bits[place] = '0';
        ++place;
    }
}

char calcuate(const char* postfix, const char* operands, const char* bits)
{
    std::string copy(postfix);
    const size_t count = std::strlen(bits);
    const auto codeIsAbove = [](char c, size_t place) { return uchar(c) > place; };
    for (size_t i = 0; i < copy.size() && codeIsAbove(copy[i], i); ++i) {
        for (size_t j = 0; operands[j] && codeIsAbove(operands[j], j); ++j) {
            const size_t bit = size_t(uchar(operands[j])) - 'A';
            if (copy[i] == operands[j] && bit < count)
                copy[i] = bits[bit];
        }
    }
    std::string stack;
    for (const char c : copy) {
        if (c == '0' || c == '1')
            stack += c;
        else if (priority(c) > 0 && !apply(c, stack))
            return 'x';
    }
    return stack.size() == 1 ? stack[0] : 'x';
}

}
