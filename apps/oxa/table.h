// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_TABLE_H
#define APPS_OXA_TABLE_H

#include "text_out.h"

#include <QStringList>

/// A text table: columns as wide as their widest text, separated by two spaces.
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

    void addRow(const QStringList& texts);

    /// The headings are printed first; lines have no spaces at their ends.
    void print(TextOut& out) const;

private:
    Table(const Column* columns, size_t count);

    QList<Align> m_aligns;
    QList<QStringList> m_rows; // the headings first
};

#endif
