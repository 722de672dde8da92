// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_COMPLETION_H
#define APPS_OXA_COMPLETION_H

#include "text_out.h"

#include <QStringList>

namespace CLI {
class App;
}

/// The first word of the call by which the shells' completions ask for `complete`; the others
/// follow.
constexpr char kCompleteWord[] = "__complete";

/// Prints what may stand for the last of `words`, those of a call behind "oxa". The first line
/// tells what it is: "words", then each one in a line with a tab and its description, or "files",
/// "dirs" or "oxa" (configurations), which shells find themselves. Prints nothing when nothing is
/// known.
void complete(const CLI::App& app, const QStringList& words, TextOut& out);

#endif
