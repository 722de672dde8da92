// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_EDIT_DISTANCE_H
#define OXAUTILS_MODEL_EDIT_DISTANCE_H

#include "oxautils/oxautils_export.h"

#include <QStringList>

#include <string_view>

namespace OXA {

/// The number of changes that turn `a` into `b`, ignoring case: a letter is inserted, deleted or
/// replaced, or two that follow one another are exchanged; `limit` + 1 when there are more than
/// `limit`.
OXAUTILS_EXPORT int editDistance(std::string_view a, std::string_view b, int limit);

/// The `count` of `known` that look most like `word`, the nearest first; of equal ones in their
/// order.
OXAUTILS_EXPORT QStringList nearestNames(const QString& word, const QStringList& known, int count);

}

#endif
