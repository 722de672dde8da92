// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CSV_RECORDS_H
#define OXACAPTURE_FILES_CSV_RECORDS_H

#include <QFile>

#include <vector>

namespace OXA_CAPTURE {

/// The rows of a table whose cells are separated by commas. A cell in quotes may contain commas and
/// line ends; a quote in it is doubled.
class CsvRecords {
public:
    explicit CsvRecords(const QString& path)
        : m_file(path)
    {
    }

    bool open(); ///< false, with `error()`, when the file cannot be read

    /// Reads the next row; empty lines are passed over. False at the end of the file, or with
    /// `error()`.
    bool next(std::vector<QByteArray>& cells);

    qint64 line() const { return m_line; } ///< in which the row begins, from 1
    const QString& error() const { return m_error; } ///< empty: none
    int percentRead() const;

private:
    bool get(char& c);
    bool addCell(std::vector<QByteArray>& cells, char& end);

    QFile m_file;
    QByteArray m_bytes;
    int m_at = 0;
    qint64 m_line = 0;
    qint64 m_lines = 1; // begun so far
    qint64 m_size = 0; // of the row
    QString m_error;
};

}

#endif
