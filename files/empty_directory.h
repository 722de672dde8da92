#ifndef FILES_EMPTY_DIRECTORY_H
#define FILES_EMPTY_DIRECTORY_H

#include <QString>

namespace OXA_FILES {

/// Removes all that is in the directory `path`, hidden entries included, but for the file `kept` at
/// its top. A symbolic link goes itself, what it points to stays. Failures are ignored. Without a
/// path nothing is removed.
void emptyDirectory(const QString& path, const QString& kept = {});

}

#endif
