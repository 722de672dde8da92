#ifndef OXAUTILS_GENERATE_READABLE_PORTS_H
#define OXAUTILS_GENERATE_READABLE_PORTS_H

#include "oxautils/model/signal_item.h"

namespace OXA {

/// A port for signals of the configuration that a design connects as one.
struct ReadablePort {
    QString name; ///< legal in Verilog and VHDL, in lower case; each port's own
    QStringList bits; ///< as the configuration names them, from `left` to `right`
    bool isVector = false;
    int left = 0; ///< of a vector's range, which may ascend
    int right = 0;
    QString stem; ///< what the bits are of: "stem[left]" to "stem[right]"; empty for other bits
};

/// A part of the configuration's name of a bit: `index` is -1 for one that does not end in "[N]".
struct IndexedName {
    QString stem;
    int index = -1;
};

/// The parts of `name`, without the backslash and the blank that make Verilog read it as a word.
IndexedName indexedName(const QString& name);

/// Whether `name` is an identifier of Verilog, SystemVerilog and VHDL alike, in any case.
bool isReadable(const QString& name);

/// Ports for `items`, in their order; each bit is in one of them, and empty names are in none.
///
/// Bits of one stem are a vector of their indexes when these have no gaps. Buses of other bits, and
/// bits with gaps, are vectors down to 0.
QList<ReadablePort> readablePorts(const QList<SignalItem>& items);

}

#endif
