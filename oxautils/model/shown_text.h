#ifndef OXAUTILS_MODEL_SHOWN_TEXT_H
#define OXAUTILS_MODEL_SHOWN_TEXT_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// `text` from outside as a terminal, a log or a window may show it: in one line, without what
/// steers a terminal or changes the order of what is read.
///
/// Control and format characters, line ends among them, become "\n", "\r", "\t" or "\u202e", as
/// JSON writes them; everything else stays, backslashes too. So text that was escaped before is
/// not changed, and JSON text keeps its meaning.
OXAUTILS_EXPORT QString shownText(const QString& text);

/// The same line by line: the line ends of `text` stay.
OXAUTILS_EXPORT QString shownLines(const QString& text);

}

#endif
