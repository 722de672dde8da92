// SPDX-License-Identifier: Apache-2.0
#include "oxautils/editor/tree_line_edit.h"

namespace OXA {

TreeLineEdit::TreeLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
}

TreeLineEdit::~TreeLineEdit() = default;

}
