// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_ERROR_UNDERLINE_H
#define APPS_OXA_EDITOR_ERROR_UNDERLINE_H

#include <QPalette>
#include <QTextEdit>

/// Marks the text that `place` selects as wrong, in a colour that is visible on the palette's base.
inline QTextEdit::ExtraSelection errorUnderline(const QTextCursor& place, const QPalette& palette)
{
    const bool onDark = palette.color(QPalette::Base).lightness() < 128;
    QTextEdit::ExtraSelection selection;
    selection.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    selection.format.setUnderlineColor(onDark ? QColor(255, 110, 110) : QColor(Qt::red));
    selection.cursor = place;
    return selection;
}

#endif
