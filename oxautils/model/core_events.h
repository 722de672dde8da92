// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_CORE_EVENTS_H
#define OXAUTILS_MODEL_CORE_EVENTS_H

#include "oxautils/oxautils_export.h"

#include <QList>
#include <QStringList>

namespace OXA {

class AoCore;

/// What a core tells of its triggers, and whose triggers it takes as its own.
struct CoreEvents {
    /// Indexes of the cores whose triggers force this one, ascending: the first of its samples
    /// after such a trigger is a trigger sample, unless a window is open.
    QList<int> forcedBy;
    bool triggerOut = false; ///< the wrapper has an output that is high for one sample at a trigger
    bool stamps = false; ///< the core counts the samples of a run up to each window's trigger

    /// Whether the core has none of this, so that nothing about it is written or generated.
    bool isDefault() const { return forcedBy.isEmpty() && !triggerOut && !stamps; }
};

/// Whether all members are equal.
OXAUTILS_EXPORT bool operator==(const CoreEvents& a, const CoreEvents& b);
/// Whether any member differs.
inline bool operator!=(const CoreEvents& a, const CoreEvents& b) { return !(a == b); }

/// The indexes of `CoreEvents::forcedBy` as a file has them: separated by spaces.
OXAUTILS_EXPORT QString indexesText(const QList<int>& indexes);

/// The indexes in such a text, ascending, each once. Words that are no integers of 32 bits are left
/// out; `unreadable`, unless null, gets them.
OXAUTILS_EXPORT QList<int> indexesFromText(const QString& text, QStringList* unreadable = nullptr);

/// The places in `cores` of those whose triggers force `core`, ascending. Indexes that no other
/// core has are left out.
OXAUTILS_EXPORT QList<int> forcingPlaces(const QList<AoCore*>& cores, const AoCore& core);

/// Lets the cores at the places `forcing` of `cores` force `core`, and no others.
OXAUTILS_EXPORT void setForcingPlaces(
    const QList<AoCore*>& cores, AoCore& core, const QList<int>& forcing);

/// Whether the triggers of `core` force another one of `cores`.
OXAUTILS_EXPORT bool forcesOthers(const QList<AoCore*>& cores, const AoCore& core);

/// The name of the wrapper's output for the triggers of the core at `place`: "trigger0_o".
OXAUTILS_EXPORT QString triggerOutput(int place);

/// All these outputs of `cores`, in their order.
OXAUTILS_EXPORT QStringList triggerOutputs(const QList<AoCore*>& cores);

/// The name of the wrapper's net by which the core at `place` forces others: "pulse0".
OXAUTILS_EXPORT QString pulseNet(int place);

}

#endif
