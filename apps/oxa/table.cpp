// SPDX-License-Identifier: Apache-2.0
#include "table.h"

#include "oxautils/model/shown_text.h"

#include <algorithm>

namespace {

int textWidth(const QString& text) { return text.toUcs4().size(); }

/// `text` padded with spaces to `width` characters.
QString padded(const QString& text, int width, Table::Align align)
{
    const QString blanks(std::max(0, width - textWidth(text)), ' ');
    return align == Table::Left ? text + blanks : blanks + text;
}

}

Table::Table(const Column* columns, size_t count)
{
    QStringList headings;
    for (size_t i = 0; i < count; ++i) {
        headings += columns[i].heading;
        m_aligns += columns[i].align;
    }
    m_rows += headings;
}

void Table::addRow(const QStringList& texts)
{
    Q_ASSERT(texts.size() == m_aligns.size());
    QStringList shown;
    for (const QString& text : texts)
        shown += OXA::shownText(text);
    m_rows += shown;
}

void Table::print(TextOut& out) const
{
    QList<int> widths;
    for (int column = 0; column < m_aligns.size(); ++column) {
        int width = 0;
        for (const QStringList& row : m_rows)
            width = std::max(width, textWidth(row.at(column)));
        widths += width;
    }
    for (const QStringList& row : m_rows) {
        QStringList cells;
        for (int column = 0; column < row.size(); ++column)
            cells += padded(row.at(column), widths.at(column), m_aligns.at(column));
        QString line = cells.join("  ");
        while (line.endsWith(' '))
            line.chop(1);
        out << line << '\n';
    }
}
