// SPDX-License-Identifier: Apache-2.0
#include "text_out.h"

#include "oxautils/model/shown_text.h"

#include <QRegularExpression>

TextOut::TextOut(FILE* file)
    : m_stream(file)
{
}

TextOut::TextOut(QString* text)
    : m_stream(text)
{
}

TextOut& TextOut::operator<<(const char* literal)
{
    m_stream << literal;
    return *this;
}

TextOut& TextOut::operator<<(char c)
{
    m_stream << c;
    return *this;
}

TextOut& TextOut::operator<<(const QString& text)
{
    m_stream << OXA::shownText(text);
    return *this;
}

void TextOut::lines(const QString& text) { m_stream << OXA::shownLines(text); }

static QString indented(const QString& text)
{
    return OXA::shownLines(text).replace('\n', "\n    ") + '\n';
}

// The message with its place, when it begins with that.
static QJsonObject messageObject(const QString& text, const QString& file)
{
    QJsonObject message {
        {"message", text}
    };
    const QString next = text.mid(file.size(), 1);
    if (file.isEmpty() || !text.startsWith(file) || (next != ":" && next != " "))
        return message;
    message.insert("file", file);
    // ":LINE:" and ":LINE:COLUMN:"; the parser of configurations ends its message with the place
    static const QRegularExpression place("(?m)^(?|:(\\d+)(?::(\\d+))?:|: .* at (\\d+):(\\d+)$)");
    const auto match = place.match(text.mid(file.size()));
    if (match.hasMatch())
        message.insert("line", match.captured(1).toInt());
    if (match.capturedLength(2) > 0)
        message.insert("column", match.captured(2).toInt());
    return message;
}

void TextOut::error(const QString& text, const QString& file)
{
    m_stream << "error: " << indented(text);
    recordError(messageObject(text, file));
}

void TextOut::warning(const QString& text, const QString& file)
{
    m_stream << "warning: " << indented(text);
    recordWarning(messageObject(text, file));
}

void TextOut::failure(const QString& line)
{
    *this << line << '\n';
    recordError(messageObject(line, {}));
}

void TextOut::listed(const QString& line) { m_stream << line << '\n'; }

void TextOut::flush() { m_stream.flush(); }

bool TextOut::failed() const { return m_stream.status() != QTextStream::Ok; }

QString counted(qint64 count, const QString& what)
{
    return QString("%1 %2%3").arg(QString::number(count), what, count == 1 ? "" : "s");
}
