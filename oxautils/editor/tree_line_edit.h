// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_EDITOR_TREE_LINE_EDIT_H
#define OXAUTILS_EDITOR_TREE_LINE_EDIT_H

#include "oxautils/oxautils_export.h"

#include <QLineEdit>
#include <QList>

namespace OXA {

/// The editor of a bus, of a single signal or of one bit of a bus, in a tree of signals.
class OXAUTILS_EXPORT TreeLineEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit TreeLineEdit(QWidget* parent = nullptr); ///< of one bit, until changed
    ~TreeLineEdit() override;

    qint32 bitWidth = 1; ///< bits of the value
    qint32 row = -1; ///< a bit's top-level row; -1 in the editor of a row
    QList<TreeLineEdit*> subEdits; ///< a bus's bits in their order; the tree owns them
};

}

#endif
