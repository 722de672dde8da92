// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_FILE_VIEWER_H
#define APPS_OXA_EDITOR_FILE_VIEWER_H

#include <QDialog>

/// A place in a file, as given in messages.
struct FilePlace {
    QString path; ///< absolute; empty when a message names no existing file
    int line = 0; ///< from 1; 0: none
};

/// The first place that `message` names; relative paths are below `directory`.
FilePlace placeIn(const QString& message, const QString& directory);

/// Shows a text file with one line highlighted.
class FileViewer : public QDialog {
    Q_OBJECT

public:
    explicit FileViewer(const FilePlace& place, QWidget* parent = nullptr);
};

#endif
