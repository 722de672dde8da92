// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_TARGET_REPEAT_ROWS_H
#define APPS_OXA_EDITOR_TARGET_REPEAT_ROWS_H

#include <QObject>

class QFormLayout;
class QLineEdit;
class QSpinBox;

/// The fields for captures that follow one another: how many, and their files.
class RepeatRows : public QObject {
    Q_OBJECT

public:
    /// Adds its rows to `form`.
    RepeatRows(QFormLayout& form, QObject* parent);

    qint64 count() const; ///< captures; 0: until they are stopped

    /// The pattern of the files, from the directory `base` on; empty: no files. Asks before
    /// existing files are replaced. False when they may not be, or, with `error`, cannot be
    /// written.
    bool takePattern(const QString& base, QString& pattern, QString* error) const;

private:
    QSpinBox* m_count;
    QLineEdit* m_pattern;
};

#endif
