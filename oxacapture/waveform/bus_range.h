// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_BUS_RANGE_H
#define OXACAPTURE_WAVEFORM_BUS_RANGE_H

#include "oxautils/model/bit_range.h"
#include "oxautils/model/signal_item.h"

namespace OXA_CAPTURE {

using OXA::takeIndex;

/// The vector that a bus is in a file, and the indexes of its bits: those of `bits`; when they are
/// no range, `name`, down to 0.
OXA::BitRange busRange(const QStringList& bits, const QString& name);

/// The bus of the first `width` bits of `range`.
OXA::SignalItem busItem(const OXA::BitRange& range, int width);

/// The signals called `names`, with those that follow one another as the bits of a vector, such as
/// "count[7]" to "count[0]", as buses.
QList<OXA::SignalItem> groupedBits(const QStringList& names);

}

#endif
