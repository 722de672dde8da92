// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_SHOWN_TEXT_H
#define OXAUTILS_MODEL_SHOWN_TEXT_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// `text` from outside, escaped for a terminal, a log or a window: in one line, without characters
/// that control a terminal or change the reading order.
///
/// Control and format characters, line ends among them, become "\n", "\r", "\t" or "\u202e", as
/// JSON writes them; everything else stays, backslashes too. So text that was escaped before is
/// not changed, and JSON text keeps its meaning.
OXAUTILS_EXPORT QString shownText(const QString& text);

/// The same for each line: the line ends of `text` stay.
OXAUTILS_EXPORT QString shownLines(const QString& text);

}

#endif
