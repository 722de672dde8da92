// SPDX-License-Identifier: Apache-2.0
#ifndef FILES_EMPTY_DIRECTORY_H
#define FILES_EMPTY_DIRECTORY_H

#include <QString>

namespace OXA_FILES {

/// Removes the content of the directory `path`, hidden entries included, except for the file `kept`
/// at its top. Symbolic links are removed, their targets are not. Failures are ignored. An empty
/// path does nothing.
void emptyDirectory(const QString& path, const QString& kept = {});

}

#endif
