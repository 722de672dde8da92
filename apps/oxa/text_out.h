// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_TEXT_OUT_H
#define APPS_OXA_TEXT_OUT_H

#include <QJsonDocument>
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
    /// that none looks like a message of this program.
    void error(const QString& text);
    void warning(const QString& text); ///< "warning: TEXT" alike
    /// A result for programs.
    void json(const QJsonObject& object);
    /// A line of a list for other tools, unchanged.
    void listed(const QString& line);

    void flush();
    bool failed() const;

private:
    QTextStream m_stream;
};

/// "1 error", "2 errors".
QString counted(qint64 count, const QString& what);

#endif
