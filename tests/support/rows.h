// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_ROWS_H
#define TESTS_SUPPORT_ROWS_H

#include <QtTest>

/// Lets a test run once for each of `rows`, which have their name in `what`.
template <typename Row, size_t count> void addRows(const Row (&rows)[count])
{
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < count; ++i)
        QTest::newRow(rows[i].what) << int(i);
}

/// The one of `rows` for which the test runs.
template <typename Row, size_t count> const Row& rowOf(const Row (&rows)[count])
{
    QFETCH(int, row);
    return rows[row];
}

#endif
