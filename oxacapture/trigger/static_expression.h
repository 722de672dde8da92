#ifndef OXACAPTURE_TRIGGER_STATIC_EXPRESSION_H
#define OXACAPTURE_TRIGGER_STATIC_EXPRESSION_H

#include "oxacapture/trigger/trigger_setup.h"

namespace OXA_CAPTURE {

/// Compiles an expression that becomes part of the netlist, as Verilog reads it: M0 to M15, !, ~,
/// &, ^, |, &&, ||, the reductions of a single bit, 1'b0, 1'b1 and parentheses.
///
/// False for anything else, with the reason in `error`.
OXACAPTURE_EXPORT bool compileStatic(const QString& text, TriggerTable& table, QString& error);

/// Evaluates such an expression 64 times at once: bit r of `value` is its value when bit r of
/// `units`, which has an entry for each of M0 to M15, are their outputs.
OXACAPTURE_EXPORT bool evaluateStatic(
    const QString& text, const std::vector<quint64>& units, quint64& value, QString& error);

}

#endif
