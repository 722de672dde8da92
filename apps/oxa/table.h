#ifndef APPS_OXA_TABLE_H
#define APPS_OXA_TABLE_H

#include "text_out.h"

#include <QStringList>

/// A table for people: columns as wide as their widest text, two blanks apart.
class Table {
public:
    enum Align { Left, Right };

    struct Column {
        const char* heading;
        Align align;
    };

    template <size_t N>
    explicit Table(const Column (&columns)[N])
        : Table(columns, N)
    {
    }

    /// One text a column.
    void addRow(const QStringList& texts);

    /// Headings first; no blanks at the ends of lines.
    void print(TextOut& out) const;

private:
    Table(const Column* columns, size_t count);

    QList<Align> m_aligns;
    QList<QStringList> m_rows; // the headings as the first
};

#endif
