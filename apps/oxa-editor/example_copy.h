// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_EXAMPLE_COPY_H
#define APPS_OXA_EDITOR_EXAMPLE_COPY_H

#include <QString>

/// Copies the installed example into the directory `uart` below `directory`, with the list of its
/// design's sources. Files that are there stay as they are, so that a second call opens the same
/// example. False, with the reason in `error`, on failure; `configuration` is the copy to open.
bool copyExample(const QString& directory, QString& configuration, QString* error);

#endif
