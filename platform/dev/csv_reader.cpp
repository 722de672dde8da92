// SPDX-License-Identifier: Apache-2.0
#include "dev/csv_reader.h"

namespace DEV {

bool CsvReader::atLineEnd() const
{
    return peek() == '\n'
        || (peek() == '\r' && m_position + 1 < m_text.size() && m_text[m_position + 1] == '\n');
}

void CsvReader::skipLineEnd()
{
    m_position += peek() == '\r' ? 2 : 1;
    m_lineStart = m_position;
    ++m_line;
}

CsvRow CsvReader::next()
{
    while (!atEnd() && atLineEnd())
        skipLineEnd();
    CsvRow row;
    while (!atEnd() && m_error.isEmpty()) {
        row << field();
        if (atEnd() || peek() != ',')
            break;
        ++m_position;
        if (atEnd())
            row << field(); // the empty one after a last comma
    }
    return m_error.isEmpty() ? row : CsvRow();
}

CsvField CsvReader::field()
{
    CsvField result {{}, line(), column()};
    if (peek() == '"') {
        result.text = quoted();
        if (m_error.isEmpty() && !atEnd() && peek() != ',' && !atLineEnd())
            m_error = "text after a closing quote";
        return result;
    }
    const int start = m_position;
    while (!atEnd() && peek() != ',' && !atLineEnd())
        ++m_position;
    result.text = m_text.mid(start, m_position - start);
    return result;
}

QString CsvReader::quoted()
{
    QString text;
    for (++m_position; !atEnd();) {
        if (peek() == '"') {
            ++m_position;
            if (peek() != '"')
                return text;
        }
        text += peek();
        if (peek() == '\n') {
            ++m_line;
            m_lineStart = m_position + 1;
        }
        ++m_position;
    }
    m_error = "a quote that is never closed";
    return text;
}

}
