// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_LEAST_LINES_H
#define APPS_OXA_EDITOR_LEAST_LINES_H

#include <QWidget>

/// Keeps the first lines of a list visible in a small window.
inline void keepLeastLines(QWidget& list)
{
    constexpr int kLines = 3;
    list.setMinimumHeight(list.fontMetrics().lineSpacing() * kLines);
}

#endif
