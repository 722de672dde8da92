// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_TEXT_OUT_H
#define APPS_OXA_TEXT_OUT_H

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

#include <type_traits>

/// A program's text output. The program's own literals are written unchanged; every other text may
/// come from outside, and is written as `OXA::shownText` returns it.
class TextOut {
public:
    explicit TextOut(FILE* file);
    explicit TextOut(QString* text);

    TextOut& operator<<(const char* literal);
    TextOut& operator<<(char c);
    TextOut& operator<<(const QString& text);

    template <typename Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
    TextOut& operator<<(Number number)
    {
        m_stream << number;
        return *this;
    }

    /// Text of several lines.
    void lines(const QString& text);
    /// "error: TEXT". TEXT may contain another program's output; its further lines are indented, so
    /// that none looks like a message of this program. When it begins with "FILE:" or
    /// "FILE:LINE:COLUMN:", programs read the place as such.
    void error(const QString& text, const QString& file = {});
    void warning(const QString& text, const QString& file = {}); ///< "warning: TEXT" alike
    /// Why the command fails, as a line of its own form.
    void failure(const QString& line);
    // Add to what programs read about errors and warnings, and print nothing.
    void recordError(const QJsonObject& message) { m_errors += message; }
    void recordWarning(const QJsonObject& message) { m_warnings += message; }
    const QJsonArray& errors() const { return m_errors; }
    const QJsonArray& warnings() const { return m_warnings; }

    /// Sets the result for programs; whoever ends the program prints it with the messages.
    void setResult(const QJsonObject& object) { m_result = object; }
    const QJsonObject& result() const { return m_result; }
    /// A line of a list for other tools, unchanged.
    void listed(const QString& line);

    void flush();
    bool failed() const;

private:
    QTextStream m_stream;
    QJsonArray m_errors;
    QJsonArray m_warnings;
    QJsonObject m_result;
};

/// "1 error", "2 errors".
QString counted(qint64 count, const QString& what);

#endif
