// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_LEAST_LINES_H
#define APPS_OXA_EDITOR_LEAST_LINES_H

#include <QAbstractScrollArea>

/// Keeps the first lines of a list visible in a small window.
inline void keepLeastLines(QWidget& list)
{
    constexpr int kLines = 3;
    list.setMinimumHeight(list.fontMetrics().lineSpacing() * kLines);
}

/// Makes a list as high as its rows, at most `lines`; it scrolls to further ones.
inline void keepMostLines(QAbstractScrollArea& list, int lines)
{
    list.setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    list.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    list.setMinimumHeight(list.fontMetrics().lineSpacing() * 2);
    list.setMaximumHeight(list.fontMetrics().lineSpacing() * (lines + 1));
}

#endif
