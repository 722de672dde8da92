// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/static_expression.h"

#include <algorithm>

namespace OXA {

namespace {

constexpr int kDeepest = 200; // Verilog's readers have limits
constexpr char kReduction = '='; // of one bit: no change

/// An operator, or an open parenthesis, without its right operand yet.
struct Pending {
    char symbol;
    int strength;
};

constexpr int kOpen = 0;
constexpr int kLoosest = 1;
constexpr int kPrefix = 6;

Pending binaryOperator(const QString& text)
{
    const bool isAnd = text.startsWith('&');
    if (text.size() > 1)
        return {isAnd ? '&' : '|', isAnd ? 2 : kLoosest};
    return {text.at(0).toLatin1(), isAnd ? 5 : text == "^" ? 4 : 3};
}

/// White space of Verilog, line ends included.
bool isSpace(const Token& token)
{
    return token.kind == Token::Blank || QLatin1String("\n\v\f\r").contains(token.text.at(0));
}

/// Converts tokens to postfix order.
class Parser {
public:
    Parser(std::vector<Step>& steps, const QList<int>& units)
        : m_steps(steps)
        , m_units(units)
    {
    }

    SyntaxFault::Kind take(const Token& token)
    {
        if (isSpace(token))
            return SyntaxFault::None;
        m_empty = false;
        if (token.kind == Token::Other)
            return SyntaxFault::Unexpected;
        return m_wantsOperand ? takeOperand(token) : takeOperator(token);
    }

    SyntaxFault::Kind finish()
    {
        if (m_wantsOperand)
            return m_empty ? SyntaxFault::Empty : SyntaxFault::EndsEarly;
        outputDownTo(kLoosest);
        return m_open > 0 ? SyntaxFault::Unclosed : SyntaxFault::None;
    }

private:
    SyntaxFault::Kind takeOperand(const Token& token)
    {
        switch (token.kind) {
        case Token::Unit:
            if (token.unit < 0)
                return SyntaxFault::UnknownUnit;
            m_steps.push_back({'A', int(m_units.size() - 1 - m_units.indexOf(token.unit))});
            endOperand();
            return SyntaxFault::None;
        case Token::Constant:
            m_steps.push_back({'A', int(m_units.size())}); // 0 in every row
            if (token.text == "1'b1")
                m_steps.push_back({'!', 0});
            endOperand();
            return SyntaxFault::None;
        case Token::Open:
            ++m_open;
            return nest({'(', kOpen});
        case Token::Negation:
            return nest({'!', kPrefix});
        default:
            return token.kind == Token::Binary && token.text.size() == 1
                ? nest({kReduction, kPrefix})
                : SyntaxFault::NoOperand;
        }
    }

    SyntaxFault::Kind takeOperator(const Token& token)
    {
        if (token.kind == Token::Binary) {
            const Pending binary = binaryOperator(token.text);
            outputDownTo(binary.strength);
            m_pending.push_back(binary);
            m_wantsOperand = true;
            return SyntaxFault::None;
        }
        if (token.kind != Token::Close)
            return m_open > 0 ? SyntaxFault::Unclosed : SyntaxFault::NoOperator;
        if (m_open == 0)
            return SyntaxFault::Unexpected;
        outputDownTo(kLoosest);
        m_pending.pop_back();
        --m_open;
        --m_depth;
        endOperand();
        return SyntaxFault::None;
    }

    SyntaxFault::Kind nest(Pending pending)
    {
        m_pending.push_back(pending);
        return ++m_depth > kDeepest ? SyntaxFault::TooDeep : SyntaxFault::None;
    }

    void endOperand()
    {
        m_wantsOperand = false;
        outputDownTo(kPrefix);
    }

    void outputDownTo(int strength)
    {
        while (!m_pending.empty() && m_pending.back().strength >= strength) {
            if (m_pending.back().symbol != kReduction)
                m_steps.push_back({m_pending.back().symbol, 0});
            m_depth -= m_pending.back().strength == kPrefix;
            m_pending.pop_back();
        }
    }

    std::vector<Step>& m_steps;
    const QList<int>& m_units;
    std::vector<Pending> m_pending;
    int m_open = 0; ///< parentheses
    int m_depth = 0; ///< these and prefix operators
    bool m_wantsOperand = true;
    bool m_empty = true;
};

}

QString SyntaxFault::text() const
{
    switch (kind) {
    case None:
        return {};
    case Empty:
        return "it is empty";
    case EndsEarly:
        return "it ends too early";
    case NoOperand:
        return QString("there is nothing before \"%1\"").arg(token);
    case NoOperator:
        return QString("there is no operator before \"%1\"").arg(token);
    case Unclosed:
        return "a parenthesis is not closed";
    case UnknownUnit:
        return QString("there is no unit \"%1\"").arg(token);
    case TooDeep:
        return QString("it is nested deeper than %1 levels").arg(kDeepest);
    case Unexpected:
        break;
    }
    return QString("unexpected \"%1\"").arg(token);
}

StaticExpression parseStatic(const QList<Token>& tokens)
{
    StaticExpression expression;
    expression.units = namedUnits(tokens);
    Parser parser(expression.steps, expression.units);
    for (const Token& token : tokens) {
        const SyntaxFault::Kind kind = parser.take(token);
        if (kind == SyntaxFault::None)
            continue;
        expression.fault = {kind, token.text};
        return expression;
    }
    expression.fault.kind = parser.finish();
    return expression;
}

TruthTable staticTable(const StaticExpression& expression)
{
    return evaluateSteps(expression.steps, expression.units.size());
}

}
