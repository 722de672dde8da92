// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_NAME_CHECK_H
#define APPS_OXA_EDITOR_NAME_CHECK_H

#include "oxautils/design/design_index.h"

/// A line of a list of names whose signal cannot be captured from the design.
struct UnknownName {
    int line; ///< from 0
    QString text; ///< "cpu/stat is not in the design; the nearest names are ..."
};

/// The lines of `list`, as `parseSignals` reads it, that name a signal or bit which the design of
/// `index` does not have, or a memory. Only the first texts have the nearest names, whose search
/// takes longer.
QList<UnknownName> unknownNames(const QString& list, const OXA::DesignIndex& index);

#endif
