// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/truth_table.h"

#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/encoding/trigger_expression.h"
#include "oxautils/model/limits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

namespace OXA {

namespace {

constexpr int kRowsPerWord = 64;
constexpr int kVariablesPerWord = 6;

// The bits of a row's number, for 64 consecutive rows.
constexpr quint64 kRowBits[kVariablesPerWord] = {0xaaaaaaaaaaaaaaaa, 0xcccccccccccccccc,
    0xf0f0f0f0f0f0f0f0, 0xff00ff00ff00ff00, 0xffff0000ffff0000, 0xffffffff00000000};

// Rows are evaluated in blocks of 2048, with one decision about each step for all of them.
constexpr int kWordsPerBlock = 32;
constexpr int kVariablesPerBlock = kVariablesPerWord + 5;
static_assert(kWordsPerBlock == 1 << (kVariablesPerBlock - kVariablesPerWord));

using Block = std::array<quint64, kWordsPerBlock>;

constexpr char kOperators[] = "!&^|";

constexpr std::array<char, 512> bytePairs()
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::array<char, 512> pairs {};
    for (size_t byte = 0; byte < 256; ++byte) {
        pairs[2 * byte] = kDigits[byte >> 4];
        pairs[2 * byte + 1] = kDigits[byte & 0xf];
    }
    return pairs;
}

// Both digits of every byte.
constexpr std::array<char, 512> kBytePairs = bytePairs();

/// Whether it has only names, operators and parentheses. Names have no leading zeros; two operators
/// in a row are accepted here, but are not an expression.
bool isLegal(const QString& exp)
{
    Piece piece {Piece::Blank, 0, 0};
    while (piece.start + piece.length < exp.size()) {
        piece = pieceAt(exp, piece.start + piece.length);
        const bool legal = piece.kind == Piece::Unit
            ? piece.unit >= 0 && piece.length == (piece.unit < 10 ? 2 : 3)
            : QLatin1String("!&^|()").contains(exp.at(piece.start));
        if (!legal)
            return false;
    }
    return true;
}

/// The postfix text as steps, after letters are replaced for a row; the same steps for every row.
std::vector<Step> stepsOf(const QByteArray& postfix, int& stopsAt)
{
    std::vector<Step> steps;
    for (int i = 0; i < postfix.size(); ++i) {
        const char c = postfix.at(i);
        // As in calcuate: letters stay from the first character on whose code is not above its
        // position.
        if (stopsAt < 0 && uchar(c) <= i)
            stopsAt = i;
        if (std::strchr(kOperators, c))
            steps.push_back({c, 0});
        else if (stopsAt < 0 && c >= 'A' && c <= 'Z')
            steps.push_back({'A', c - 'A'});
    }
    return steps;
}

/// The maximal number of values on the stack; 0 when the steps do not give exactly one. Independent
/// of the row.
size_t stackNeeded(const std::vector<Step>& steps)
{
    size_t depth = 0;
    size_t most = 0;
    for (const Step& step : steps) {
        const size_t taken = step.symbol == 'A' ? 0 : step.symbol == '!' ? 1 : 2;
        if (depth < taken)
            return 0;
        depth += 1 - taken;
        most = std::max(most, depth);
    }
    return depth == 1 ? most : 0;
}

template <typename Operation>
void combine(Block& result, const Block& left, const Block& right, Operation operation)
{
    for (int i = 0; i < kWordsPerBlock; ++i)
        result[i] = operation(left[i], right[i]);
}

/// Runs steps over a block of rows. Operands are not copied: the stack points to their values, and
/// each position of the stack has a buffer for a result.
class Evaluator {
public:
    explicit Evaluator(const std::vector<Step>& steps)
        : m_steps(steps)
        , m_results(stackNeeded(steps))
        , m_stack(m_results.size())
    {
    }

    /// For steps that give one value.
    const Block& run(const std::vector<Block>& variables)
    {
        size_t depth = 0;
        for (const Step& step : m_steps) {
            if (step.symbol == 'A') {
                m_stack[depth++] = &variables[size_t(step.variable)];
                continue;
            }
            depth -= step.symbol == '!' ? 0 : 1;
            apply(step.symbol, depth - 1);
        }
        return *m_stack[0];
    }

private:
    void apply(char symbol, size_t place)
    {
        Block& result = m_results[place];
        const Block& left = *m_stack[place];
        if (symbol == '!')
            combine(result, left, left, [](quint64 a, quint64) { return ~a; });
        else if (symbol == '&')
            combine(result, left, *m_stack[place + 1], std::bit_and<quint64>());
        else if (symbol == '^')
            combine(result, left, *m_stack[place + 1], std::bit_xor<quint64>());
        else
            combine(result, left, *m_stack[place + 1], std::bit_or<quint64>());
        m_stack[place] = &result;
    }

    const std::vector<Step>& m_steps;
    std::vector<Block> m_results;
    std::vector<const Block*> m_stack;
};

/// The variables that are "0" in every row.
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

/// The values of the variable that is bit `bit` of a row's number, in block number `block`.
Block valuesOf(int bit, size_t block)
{
    Block values;
    for (size_t i = 0; i < kWordsPerBlock; ++i) {
        const size_t word = block * kWordsPerBlock + i;
        const bool set = bit >= kVariablesPerWord && (word >> (bit - kVariablesPerWord)) & 1;
        values[i] = bit < kVariablesPerWord ? kRowBits[bit] : set ? ~quint64(0) : 0;
    }
    return values;
}

std::vector<quint64> evaluateRows(
    const std::vector<Step>& steps, int variables, const std::vector<bool>& forced)
{
    std::vector<quint64> words(std::max(1, (1 << variables) / kRowsPerWord));
    std::vector<Block> values(size_t(variables) + 1, Block {});
    Evaluator evaluator(steps);
    for (size_t block = 0; block * kWordsPerBlock < words.size(); ++block) {
        for (int v = 0; v < variables; ++v) {
            const int bit = variables - 1 - v;
            if (!forced[size_t(v)] && (block == 0 || bit >= kVariablesPerBlock))
                values[size_t(v)] = valuesOf(bit, block);
        }
        const Block& result = evaluator.run(values);
        const size_t first = block * kWordsPerBlock;
        std::copy_n(result.begin(), std::min(words.size() - first, size_t(kWordsPerBlock)),
            words.begin() + long(first));
    }
    return words;
}

/// The text of eight rows for each value of a byte, the first row in the lowest bit.
std::vector<QString> byteTexts()
{
    std::vector<QString> texts(256, QString(8, '0'));
    for (size_t byte = 0; byte < texts.size(); ++byte) {
        for (int row = 0; row < 8; ++row)
            texts[byte][row] = QLatin1Char((byte >> row) & 1 ? '1' : '0');
    }
    return texts;
}

int distinctLetters(const QByteArray& postfix)
{
    QByteArray operands(postfix.size() + 1, '\0');
    getOperand(postfix.constData(), operands.data());
    return int(std::strlen(operands.constData()));
}

}

TruthTable evaluateSteps(const std::vector<Step>& steps, int variables)
{
    TruthTable table;
    table.variables = variables;
    table.defined = stackNeeded(steps) > 0;
    if (table.defined)
        table.words = evaluateRows(steps, variables, std::vector<bool>(size_t(variables)));
    return table;
}

std::vector<bool> unitSwitches(const AoCore& core)
{
    std::vector<bool> enables;
    for (const MatchUnit* unit : core.matchUnits)
        enables.push_back(unit->enabled);
    enables.resize(std::max(enables.size(), size_t(kUnits))); // a host may have removed units
    return enables;
}

TruthTable compileExpression(QString exp, const std::vector<bool>& enables)
{
    exp.remove(' ').remove('\t');
    std::vector<bool> added = enables;
    TruthTable table;
    table.legal = isLegal(exp);
    resetLogicExp(exp, added);
    const QByteArray infix = changeExpItem(exp).toLatin1();
    QByteArray postfix(infix.size() + 1, '\0');
    translet(infix.constData(), postfix.data());
    postfix.truncate(int(std::strlen(postfix.constData())));
    table.variables = std::min(distinctLetters(postfix), kUnits);

    const std::vector<Step> steps = stepsOf(postfix, table.stopsAt);
    table.defined = table.legal && stackNeeded(steps) > 0;
    if (table.defined)
        table.words
            = evaluateRows(steps, table.variables, forcedToZero(table.variables, enables, added));
    return table;
}

QString tableText(const TruthTable& table)
{
    constexpr int kRowsPerStep = 8;
    static const std::vector<QString> texts = byteTexts();
    QString text(table.rows(), 'x');
    QChar* rows = text.data();
    for (int row = 0; table.defined && row < table.rows(); row += kRowsPerStep) {
        const quint64 word = table.words[size_t(row) / kRowsPerWord];
        const QString& step = texts[(word >> (row % kRowsPerWord)) & 0xff];
        std::copy_n(step.constData(), std::min(kRowsPerStep, table.rows() - row), rows + row);
    }
    return text;
}

QByteArray tableDigits(const TruthTable& table)
{
    if (!table.defined || table.rows() == 1)
        return {};
    if (table.rows() < kRowsPerWord)
        return QByteArray::number(table.words[0] & ((quint64(1) << table.rows()) - 1), 16)
            .rightJustified(std::max(1, table.rows() / 4), '0');
    QByteArray digits(table.rows() / 4, Qt::Uninitialized);
    char* digit = digits.data();
    for (auto word = table.words.rbegin(); word != table.words.rend(); ++word) {
        for (int shift = kRowsPerWord - 8; shift >= 0; shift -= 8, digit += 2)
            std::memcpy(digit, &kBytePairs[2 * ((*word >> shift) & 0xff)], 2);
    }
    return digits;
}

}
