#include "oxautils/check/static_table.h"

namespace OXA {

namespace {

struct Binding {
    const char* text;
    char symbol;
    int strength; // of the table's operators; a parenthesis has 0
};

constexpr Binding kBindings[] = {
    {"||", '|', 1},
    {"&&", '&', 2},
    {"|",  '|', 3},
    {"^",  '^', 4},
    {"&",  '&', 5},
    {"!",  '!', 6},
    {"~",  '!', 6},
    {"(",  '(', 0},
};

const Binding& bindingOf(const Token& token)
{
    const Binding* binding = kBindings;
    while (token.text != binding->text)
        ++binding;
    return *binding;
}

/// Brings tokens into postfix order.
class Postfix {
public:
    std::vector<Step> steps;
    QList<int> units; ///< by their variables; -1 stands for 1'b0

    void take(const Token& token)
    {
        if (token.kind == Token::Unit || token.kind == Token::Constant) {
            steps.push_back({'A', variableOf(token.unit)});
            if (token.text == "1'b1")
                steps.push_back({'!', 0});
            m_wantsOperand = false;
        } else if (token.kind == Token::Close) {
            outputDownTo(1);
            m_operators.pop_back();
        } else if (token.kind == Token::Open || token.kind == Token::Negation) {
            m_operators.push_back(&bindingOf(token));
            m_wantsOperand = true;
        } else if (token.kind == Token::Binary && !m_wantsOperand) { // else it reduces one bit
            outputDownTo(bindingOf(token).strength);
            m_operators.push_back(&bindingOf(token));
            m_wantsOperand = true;
        }
    }

    void finish() { outputDownTo(1); }

private:
    int variableOf(int unit)
    {
        if (!units.contains(unit))
            units += unit;
        return units.indexOf(unit);
    }

    void outputDownTo(int strength)
    {
        while (!m_operators.empty() && m_operators.back()->strength >= strength) {
            steps.push_back({m_operators.back()->symbol, 0});
            m_operators.pop_back();
        }
    }

    std::vector<const Binding*> m_operators;
    bool m_wantsOperand = true;
};

}

TruthTable staticTable(const QList<Token>& tokens)
{
    Postfix postfix;
    for (const Token& token : tokens)
        postfix.take(token);
    postfix.finish();
    std::vector<bool> forced;
    for (const int unit : qAsConst(postfix.units))
        forced.push_back(unit < 0);
    return evaluateSteps(postfix.steps, int(forced.size()), forced);
}

}
