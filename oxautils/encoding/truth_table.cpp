#include "oxautils/encoding/truth_table.h"

#include "oxautils/encoding/trigger_expression.h"

#include <algorithm>
#include <cstring>

namespace OXA {

namespace {

constexpr int kRowsPerWord = 64;
constexpr int kVariablesPerWord = 6;

// The bits of a row's number, for 64 consecutive rows.
constexpr quint64 kRowBits[kVariablesPerWord] = {0xaaaaaaaaaaaaaaaa, 0xcccccccccccccccc,
    0xf0f0f0f0f0f0f0f0, 0xff00ff00ff00ff00, 0xffff0000ffff0000, 0xffffffff00000000};

constexpr char kOperators[] = "!&^|";

bool isOneOf(QChar c, const char* characters)
{
    return c.unicode() != 0 && c.unicode() < 0x80 && std::strchr(characters, c.toLatin1());
}

/// Whether `exp` holds only what expressions are made of. `letters` is the same text with letters
/// for unit names: what is left of a name there was none.
bool isLegal(const QString& exp, const QString& letters)
{
    const auto inExpressions
        = [](QChar c) { return isOneOf(c, "M0123456789()") || isOneOf(c, kOperators); };
    const auto inLetters
        = [](QChar c) { return isOneOf(c, "ABCDEFGHIJKLMNOP()") || isOneOf(c, kOperators); };
    return std::all_of(exp.begin(), exp.end(), inExpressions)
        && std::all_of(letters.begin(), letters.end(), inLetters);
}

/// The postfix text as one row's evaluation sees it once its letters are replaced; the same for
/// every row but for the values.
struct Step {
    char symbol; // an operator, or 'A' for an operand
    int variable; // of an operand, counted from the most significant bit of the row's number
};

std::vector<Step> stepsOf(const QByteArray& postfix)
{
    std::vector<Step> steps;
    bool replacing = true;
    for (int i = 0; i < postfix.size(); ++i) {
        const char c = postfix.at(i);
        // As calcuate: from the first character on whose code is not above its place, letters stay.
        replacing = replacing && c > i;
        if (std::strchr(kOperators, c))
            steps.push_back({c, 0});
        else if (replacing && c >= 'A' && c <= 'Z')
            steps.push_back({'A', c - 'A'});
    }
    return steps;
}

/// Whether the steps leave exactly one value, which does not depend on the row.
bool leavesOneValue(const std::vector<Step>& steps)
{
    int depth = 0;
    for (const Step& step : steps) {
        const int taken = step.symbol == 'A' ? 0 : step.symbol == '!' ? 1 : 2;
        if (depth < taken)
            return false;
        depth += 1 - taken;
    }
    return depth == 1;
}

quint64 evaluate(
    const std::vector<Step>& steps, const quint64* variables, std::vector<quint64>& stack)
{
    quint64* top = stack.data() - 1; // steps that leave one value keep within the stack
    for (const Step& step : steps) {
        switch (step.symbol) {
        case '!':
            *top = ~*top;
            break;
        case '&':
            --top;
            *top &= top[1];
            break;
        case '^':
            --top;
            *top ^= top[1];
            break;
        case '|':
            --top;
            *top |= top[1];
            break;
        default:
            *++top = variables[step.variable];
        }
    }
    return *top;
}

/// Which variables every row takes as "0".
std::vector<bool> forcedToZero(
    int variables, const std::vector<bool>& enables, const std::vector<bool>& added)
{
    QByteArray bits(variables, '1');
    resetBitDataIn(bits.data(), enables, added);
    std::vector<bool> forced;
    for (const char bit : bits)
        forced.push_back(bit == '0');
    return forced;
}

std::vector<quint64> evaluateRows(
    const std::vector<Step>& steps, int variables, const std::vector<bool>& forced)
{
    std::vector<quint64> words(std::max(1, (1 << variables) / kRowsPerWord));
    std::vector<quint64> values(size_t(variables) + 1);
    std::vector<quint64> stack(steps.size() + 1);
    for (size_t word = 0; word < words.size(); ++word) {
        for (int v = 0; v < variables; ++v) {
            const int bit = variables - 1 - v;
            const bool set = bit >= kVariablesPerWord && (word >> (bit - kVariablesPerWord)) & 1;
            const quint64 rows = bit < kVariablesPerWord ? kRowBits[bit] : set ? ~quint64(0) : 0;
            values[size_t(v)] = forced[size_t(v)] ? 0 : rows;
        }
        words[word] = evaluate(steps, values.data(), stack);
    }
    return words;
}

int distinctLetters(const QByteArray& postfix)
{
    QByteArray operands(postfix.size() + 1, '\0');
    getOperand(postfix.constData(), operands.data());
    return int(std::strlen(operands.constData()));
}

}

TruthTable compileExpression(QString exp, const std::vector<bool>& enables)
{
    exp.remove(' ').remove('\t');
    std::vector<bool> added = enables;
    const QString asWritten = exp;
    resetLogicExp(exp, added);
    const QString letters = changeExpItem(exp);

    TruthTable table;
    table.legal = isLegal(asWritten, letters);
    const QByteArray infix = letters.toLatin1();
    QByteArray postfix(infix.size() + 1, '\0');
    translet(infix.constData(), postfix.data());
    postfix.truncate(int(std::strlen(postfix.constData())));
    table.variables = std::min(distinctLetters(postfix), 16);

    const std::vector<Step> steps = stepsOf(postfix);
    table.defined = table.legal && leavesOneValue(steps);
    if (table.defined)
        table.words
            = evaluateRows(steps, table.variables, forcedToZero(table.variables, enables, added));
    return table;
}

QByteArray tableDigits(const TruthTable& table)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    constexpr int kDigitsPerWord = kRowsPerWord / 4;
    if (!table.defined)
        return {};
    const int count = std::max(1, table.rows() / 4);
    // One or two rows leave the upper bits of their digit clear.
    const quint64 mask = table.rows() < 4 ? (quint64(1) << table.rows()) - 1 : 0xf;
    QByteArray digits(table.rows() == 1 ? 0 : count, '0');
    for (int i = 0; i < digits.size(); ++i) {
        const quint64 word = table.words[size_t(i) / kDigitsPerWord];
        digits[count - 1 - i] = kDigits[(word >> (i % kDigitsPerWord * 4)) & mask];
    }
    return digits;
}

}
