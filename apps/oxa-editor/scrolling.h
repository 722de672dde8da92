// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SCROLLING_H
#define APPS_OXA_EDITOR_SCROLLING_H

class QScrollArea;
class QWidget;

/// An area around `content`, its owner, with scroll bars where the content does not fit although
/// it is as small as its layout allows.
QScrollArea* scrolling(QWidget* content);

#endif
