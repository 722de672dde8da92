// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_NARROW_BUTTON_H
#define APPS_OXA_EDITOR_NARROW_BUTTON_H

#include <QAbstractButton>

/// Lets `button` become as narrow as its text; styles ask for more.
inline void allowNarrow(QAbstractButton& button)
{
    constexpr int kMargins = 3; // characters, left and right together
    const QFontMetrics metrics = button.fontMetrics();
    button.setMinimumWidth(
        metrics.horizontalAdvance(button.text()) + metrics.averageCharWidth() * kMargins);
}

#endif
