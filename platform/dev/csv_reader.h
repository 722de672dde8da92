// SPDX-License-Identifier: Apache-2.0
#ifndef DEV_CSV_READER_H
#define DEV_CSV_READER_H

#include <QString>
#include <QVector>

namespace DEV {

/// One field of a comma-separated file, and where it starts, counted from 1.
struct CsvField {
    QString text;
    int line = 0;
    int column = 0; ///< in UTF-16 units
};

using CsvRow = QVector<CsvField>;

/// Takes comma-separated text apart, row by row.
///
/// A field that starts with a double quote ends at the next single one; in it a doubled quote is a
/// quote, and commas and line ends are text. Lines end in LF, CRLF or with the text; empty ones
/// are no rows.
class CsvReader {
public:
    explicit CsvReader(const QString& text)
        : m_text(text)
    {
    }

    /// The next row, empty at the end and at an error.
    CsvRow next();

    /// The error; empty when there is none. `line` and `column` are its place.
    QString error() const { return m_error; }
    int line() const { return m_line; }
    int column() const { return m_position - m_lineStart + 1; }

private:
    bool atEnd() const { return m_position >= m_text.size(); }
    QChar peek() const { return atEnd() ? QChar() : m_text[m_position]; }
    bool atLineEnd() const;
    void skipLineEnd();
    CsvField field();
    QString quoted();

    const QString m_text;
    int m_position = 0;
    int m_lineStart = 0;
    int m_line = 1;
    QString m_error;
};

}

#endif
