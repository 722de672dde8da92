// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/csv_records.h"

#include "oxacapture/files/capture_limits.h"

namespace OXA_CAPTURE {

namespace {

constexpr int kReadAtOnce = 1 << 18; // bytes
constexpr char kByteOrderMark[] = "\xef\xbb\xbf"; // spreadsheets write it

}

bool CsvRecords::open()
{
    if (!m_file.open(QIODevice::ReadOnly)) {
        m_error = "cannot be read: " + m_file.errorString();
        return false;
    }
    m_bytes = m_file.read(kReadAtOnce);
    m_at = m_bytes.startsWith(kByteOrderMark) ? int(sizeof kByteOrderMark) - 1 : 0;
    return true;
}

bool CsvRecords::get(char& c)
{
    if (m_at == m_bytes.size()) {
        m_bytes = m_file.read(kReadAtOnce);
        m_at = 0;
    }
    if (m_bytes.isEmpty()) {
        if (m_file.error() != QFileDevice::NoError)
            m_error = "cannot be read further: " + m_file.errorString();
        return false;
    }
    c = m_bytes.at(m_at++);
    m_lines += c == '\n';
    ++m_size;
    return true;
}

/// Reads a cell, and what ends it: a comma or a line end. False when there is none, or with an
/// error.
bool CsvRecords::addCell(std::vector<QByteArray>& cells, char& end)
{
    QByteArray cell;
    bool isQuoted = false;
    bool wasQuoted = false; // the byte before ended a quoted part
    char c = 0;
    while (get(c)) {
        if (m_size > kMostCharacters) {
            m_error = "the row is too long";
            return false;
        }
        if (c == '"') {
            if (wasQuoted)
                cell += c;
            isQuoted = !isQuoted;
            wasQuoted = !isQuoted;
            continue;
        }
        wasQuoted = false;
        if (!isQuoted && (c == ',' || c == '\n')) {
            if (c == '\n' && cell.endsWith('\r'))
                cell.chop(1);
            end = c;
            cells.push_back(cell);
            return true;
        }
        cell += c;
    }
    if (m_error.isEmpty() && isQuoted)
        m_error = "a quote has no end";
    if (!m_error.isEmpty() || (cells.empty() && cell.isEmpty()))
        return false;
    end = '\n';
    cells.push_back(cell);
    return true;
}

bool CsvRecords::next(std::vector<QByteArray>& cells)
{
    do {
        cells.clear();
        m_size = 0;
        m_line = m_lines;
        char end = ',';
        while (end == ',') {
            if (!addCell(cells, end))
                return false;
        }
    } while (cells.size() == 1 && cells.front().isEmpty());
    return true;
}

int CsvRecords::percentRead() const
{
    return m_file.size() > 0 ? int(m_file.pos() * 100 / m_file.size()) : 0;
}

}
