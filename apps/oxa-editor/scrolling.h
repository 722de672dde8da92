// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SCROLLING_H
#define APPS_OXA_EDITOR_SCROLLING_H

#include <QScrollArea>

/// An area around `content`, its owner, with scroll bars when the window is small.
inline QScrollArea* scrolling(QWidget* content)
{
    auto* area = new QScrollArea;
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // focus scrolls to the fields in it
    return area;
}

#endif
