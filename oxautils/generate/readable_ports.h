// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_READABLE_PORTS_H
#define OXAUTILS_GENERATE_READABLE_PORTS_H

#include "oxautils/model/signal_item.h"

namespace OXA {

/// A port for signals of the configuration that a design connects together.
struct ReadablePort {
    QString name; ///< legal in Verilog and VHDL, in lower case, unique
    QStringList bits; ///< names in the configuration, from `left` to `right`
    bool isVector = false;
    int left = 0; ///< of a vector's range, which may ascend
    int right = 0;
    QString stem; ///< the bits are "stem[left]" to "stem[right]"; empty for other bits
};

/// The parts of a bit's name in the configuration: `index` is -1 for a name that does not end in
/// "[N]".
struct IndexedName {
    QString stem;
    int index = -1;
};

/// The parts of `name`, without the backslash and the space of an escaped identifier.
IndexedName indexedName(const QString& name);

/// Whether `name`, in upper or lower case, is an identifier of Verilog, SystemVerilog and VHDL.
bool isReadable(const QString& name);

/// Ports for `items`, in their order; each bit is in one of them, and empty names are in none. None
/// has a name of `others`.
///
/// Bits of one stem without gaps in their indexes are a vector of these indexes. Other buses, and
/// bits with gaps, are vectors down to 0.
QList<ReadablePort> readablePorts(const QList<SignalItem>& items, const QStringList& others);

}

#endif
