// SPDX-License-Identifier: Apache-2.0
#ifndef FILES_INPUT_GUARD_H
#define FILES_INPUT_GUARD_H

#include <QStringList>

namespace OXA_FILES {

/// The inputs of a call, which it must neither remove nor overwrite. An empty path is ignored.
struct Inputs {
    QStringList paths; ///< files, and directories that must not be removed
    QStringList sources; ///< input directories; nothing may be written into them either
};

/// The first input that would be lost if the directory `path` were emptied, or that contains
/// `path`; empty when there is none. A link counts as its target, and a link on the way to an input
/// as the input. The files may not exist.
QString lostByEmptying(const QString& path, const Inputs& inputs);

/// The first input that writing the file `output` would change: the same name, a link to it or
/// another name of the same file; or the source directory that contains it.
QString lostByWriting(const QString& output, const Inputs& inputs);

}

#endif
