#include "oxacapture/trigger/static_expression.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr int kUnits = 16;
constexpr int kDeepest = 200; // nested parentheses and negations

// Binary operators, the loosest first.
const char* const kOperators[] = {"||", "&&", "|", "^", "&"};
constexpr int kLevels = 5;

// Reads an expression and evaluates it in one go, for 64 rows of its table at once: every operator
// works on single bits, so each bit of a word is a row of its own.
class Evaluation {
public:
    Evaluation(const QByteArray& text, const std::vector<quint64>& units)
        : m_text(text)
        , m_units(units)
    {
    }

    bool run(quint64& value, QString& error)
    {
        value = binary(0, 0);
        skipBlanks();
        if (m_error.isEmpty() && m_at < m_text.size())
            fail(QString("unexpected \"%1\"").arg(m_text.at(m_at)));
        error = m_error;
        return m_error.isEmpty();
    }

    quint32 named() const { return m_named; } // a bit for each unit in the text

private:
    quint64 binary(int level, int depth)
    {
        if (level == kLevels)
            return unary(depth);
        quint64 value = binary(level + 1, depth);
        while (m_error.isEmpty() && takeOperator(level)) {
            const quint64 right = binary(level + 1, depth);
            const char sign = kOperators[level][0];
            value = sign == '|' ? value | right : sign == '&' ? value & right : value ^ right;
        }
        return value;
    }

    bool takeOperator(int level)
    {
        skipBlanks();
        const QByteArray sign = kOperators[level];
        const bool doubled = sign.size() == 1 && sign != "^" && m_text.mid(m_at + 1, 1) == sign;
        if (m_text.mid(m_at, sign.size()) != sign || doubled)
            return false;
        m_at += sign.size();
        return true;
    }

    quint64 unary(int depth)
    {
        skipBlanks();
        if (depth > kDeepest)
            return fail("nested too deeply");
        const char c = m_at < m_text.size() ? m_text.at(m_at) : '\0';
        if (c != '!' && c != '~' && c != '&' && c != '|' && c != '^')
            return primary(depth);
        ++m_at;
        const quint64 value = unary(depth + 1);
        return c == '!' || c == '~' ? ~value : value; // a reduction of one bit is that bit
    }

    quint64 primary(int depth)
    {
        if (m_at == m_text.size())
            return fail(m_text.trimmed().isEmpty() ? "it is empty" : "it ends too early");
        const char c = m_text.at(m_at);
        if (c == 'M')
            return unit();
        for (const char* constant : {"1'b0", "1'b1"}) {
            if (m_text.mid(m_at, 4) != constant)
                continue;
            m_at += 4;
            return constant[3] == '1' ? ~quint64(0) : 0;
        }
        if (c != '(')
            return fail(QString("unexpected \"%1\"").arg(c));
        ++m_at;
        const quint64 value = binary(0, depth + 1);
        skipBlanks();
        if (m_error.isEmpty() && m_text.mid(m_at, 1) != ")")
            return fail("a parenthesis is not closed");
        ++m_at;
        return value;
    }

    quint64 unit()
    {
        int end = m_at + 1;
        while (end < m_text.size() && isdigit(uchar(m_text.at(end))))
            ++end;
        const QByteArray number = m_text.mid(m_at + 1, end - m_at - 1);
        bool ok = false;
        const int index = number.toInt(&ok);
        if (!ok || index >= kUnits)
            return fail(QString("there is no unit \"M%1\"").arg(QString(number)));
        m_at = end;
        m_named |= quint32(1) << index;
        return m_units[size_t(index)];
    }

    void skipBlanks()
    {
        while (m_at < m_text.size() && isspace(uchar(m_text.at(m_at))))
            ++m_at;
    }

    quint64 fail(const QString& error)
    {
        if (m_error.isEmpty())
            m_error = error;
        m_at = m_text.size();
        return 0;
    }

    const QByteArray m_text;
    const std::vector<quint64>& m_units;
    int m_at = 0;
    quint32 m_named = 0;
    QString m_error;
};

// Address bit `bit` in the 64 rows that begin with row `first`.
quint64 addressBit(size_t bit, size_t first)
{
    static const quint64 patterns[] = {0xaaaaaaaaaaaaaaaa, 0xcccccccccccccccc, 0xf0f0f0f0f0f0f0f0,
        0xff00ff00ff00ff00, 0xffff0000ffff0000, 0xffffffff00000000};
    if (bit < 6)
        return patterns[bit];
    return first >> bit & 1 ? ~quint64(0) : 0;
}

}

bool evaluateStatic(
    const QString& text, const std::vector<quint64>& units, quint64& value, QString& error)
{
    return Evaluation(text.toUtf8(), units).run(value, error);
}

bool compileStatic(const QString& text, TriggerTable& table, QString& error)
{
    const QByteArray bytes = text.toUtf8();
    std::vector<quint64> units(kUnits);
    quint64 value = 0;
    Evaluation trial(bytes, units);
    if (!trial.run(value, error))
        return false;

    table = {};
    for (int unit = 0; unit < kUnits; ++unit) {
        if (trial.named() >> unit & 1)
            table.units.push_back(unit);
    }
    const size_t rows = size_t(1) << table.units.size();
    for (size_t first = 0; first < rows; first += 64) {
        for (size_t bit = 0; bit < table.units.size(); ++bit)
            units[size_t(table.units[bit])] = addressBit(bit, first);
        Evaluation(bytes, units).run(value, error);
        for (size_t row = 0; row < std::min(rows, size_t(64)); ++row)
            table.rows.push_back(value >> row & 1);
    }
    return true;
}

}
