// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SCREEN_SIZE_H
#define APPS_OXA_EDITOR_SCREEN_SIZE_H

#include <QScreen>
#include <QWidget>

/// Makes a window that large, as far as its screen has room for it and its frame.
inline void resizeOnScreen(QWidget& window, const QSize& size)
{
    constexpr double kShare = 0.9; // of the screen
    window.resize(size.boundedTo(window.screen()->availableSize() * kShare));
}

#endif
