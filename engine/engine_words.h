// SPDX-License-Identifier: Apache-2.0
#ifndef ENGINE_ENGINE_WORDS_H
#define ENGINE_ENGINE_WORDS_H

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace OXA_ENGINE {

/// `text` as one word of Tcl without substitution, in ASCII: all characters except letters and
/// digits are escaped.
QByteArray tclWord(const QString& text);

/// `texts` as words of one command, each after a space.
QByteArray tclWords(const QStringList& texts);

/// The engine treats file names as patterns; this pattern matches only `path`.
QString withoutWildcards(const QString& path);

}

#endif
