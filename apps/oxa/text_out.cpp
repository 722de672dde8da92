// SPDX-License-Identifier: Apache-2.0
#include "text_out.h"

#include "oxautils/model/shown_text.h"

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

void TextOut::error(const QString& text) { m_stream << "error: " << indented(text); }

void TextOut::warning(const QString& text) { m_stream << "warning: " << indented(text); }

void TextOut::json(const QJsonObject& object)
{
    lines(QString::fromUtf8(QJsonDocument(object).toJson()));
}

void TextOut::listed(const QString& line) { m_stream << line << '\n'; }

void TextOut::flush() { m_stream.flush(); }

bool TextOut::failed() const { return m_stream.status() != QTextStream::Ok; }

QString counted(qint64 count, const QString& what)
{
    return QString("%1 %2%3").arg(QString::number(count), what, count == 1 ? "" : "s");
}
