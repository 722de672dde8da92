#ifndef FILES_INPUT_GUARD_H
#define FILES_INPUT_GUARD_H

#include <QStringList>

namespace OXA_FILES {

/// What a call reads, and so must neither remove nor overwrite. An empty path names nothing.
struct Inputs {
    QStringList paths; ///< files; also a directory that has to stay as a whole
    QStringList sources; ///< directories that are read; nothing is to be written into them either
};

/// The first input that would be lost if the directory `path` were emptied, or that `path` lies in;
/// empty when there is none. Links count like what they lead to, and a link on the way to an input
/// like the input. Nothing has to exist.
QString lostByEmptying(const QString& path, const Inputs& inputs);

/// The first input that writing the file `output` would change: by the same name, by a link to it
/// or by another name of the same file; or the source directory that it lies in.
QString lostByWriting(const QString& output, const Inputs& inputs);

}

#endif
