// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_EVENTS_TEXT_H
#define OXAUTILS_ENCODING_EVENTS_TEXT_H

#include "oxautils/model/ao_core.h"

namespace OXA {

/// Reads which cores force another one:
///
///     [CORE=]none  |  CORE=OTHER[,OTHER ...]
///
/// All numbers are places of cores in a configuration of `coreCount`, from 0. CORE may be left out
/// when there is one core. On success `core` is its place and `forcing` has those of the others,
/// ascending; empty for "none". False, with what is accepted in `error`, when the text cannot be
/// read, names a core that does not exist or a core twice, or lets a core force itself; `core` and
/// `forcing` are then not changed.
OXAUTILS_EXPORT bool forcedByFromText(
    const QString& text, int coreCount, int& core, QList<int>& forcing, QString* error);

/// The part of such a text behind the "=": "0,2" or "none". `forcing` has places.
OXAUTILS_EXPORT QString forcedByText(const QList<int>& forcing);

/// What `core` of `cores` tells of its triggers, and whose it takes: "forced by 0,2; trigger out;
/// stamps", the parts that it has; cores by their places, and behind them, as "0 and unknown index
/// 7 9", the indexes that no other core has.
OXAUTILS_EXPORT QString eventsText(const QList<AoCore*>& cores, const AoCore& core);

/// Reads the place of a core in a configuration of `coreCount` into `core`. An empty text is the
/// only core. False, with the reason in `error`, when there is no such core.
OXAUTILS_EXPORT bool corePlaceFromText(
    const QString& text, int coreCount, int& core, QString* error);

}

#endif
