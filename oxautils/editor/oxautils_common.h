// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_EDITOR_OXAUTILS_COMMON_H
#define OXAUTILS_EDITOR_OXAUTILS_COMMON_H

#include "oxautils/model/signal_item.h"

class QTreeWidget;

namespace OXA {

/// Adds a top-level row for `item` to `tree`, with a child row for each bit of a bus. Column 0, and
/// its tooltip, is the signal's `text`, or its `name` when it has none.
OXAUTILS_EXPORT void Signal2treeItem(QTreeWidget* tree, SignalItem item);

/// The last `width` characters of `value`, padded with "0" on the left.
OXAUTILS_EXPORT QString BitWidthAdjust(const QString& value, int width);

/// True when `value` has no more than `width` characters, the opposite of what the name says.
OXAUTILS_EXPORT bool checkExcessBitWidth(const QString& value, int width);

/// The number `value` of base `fromBase` in base `toBase` (2 to 36), in lower case, without leading
/// zeros; `width` zeros when `value` is not a number of 64 bits.
OXAUTILS_EXPORT QString changeRadix(const QString& value, int fromBase, int toBase, int width);

}

#endif
