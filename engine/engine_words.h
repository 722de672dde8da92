#ifndef ENGINE_ENGINE_WORDS_H
#define ENGINE_ENGINE_WORDS_H

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace OXA_ENGINE {

/// `text` as one word of Tcl that stands for itself, in ASCII: what is neither letter nor digit is
/// escaped.
QByteArray tclWord(const QString& text);

/// `texts` as the words of one command, each behind a space.
QByteArray tclWords(const QStringList& texts);

/// The engine takes a file's name for a pattern; this one matches the name `path` alone.
QString withoutWildcards(const QString& path);

}

#endif
