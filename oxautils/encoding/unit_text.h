// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_ENCODING_UNIT_TEXT_H
#define OXAUTILS_ENCODING_UNIT_TEXT_H

#include "oxautils/model/match_unit.h"
#include "oxautils/model/state_names.h"

#include <functional>

namespace OXA {

/// The bits of the value `name` at `port`, most significant first; empty when the port has no value
/// of that name. `known` then lists the names that it has.
using ValueNames
    = std::function<QString(const TriggerPort& port, const QString& name, QStringList& known)>;

/// The comparison of `unit` as text, which `unitFromText` reads back:
///
///     Basic w/edges: T0 == R01000110
///     Extended: T1 > 0x43c
///     Range: T2 not in 10000..10111, 3 times in a row (counter of 4 bits)
///     Basic w/edges: T3 rises
///     off
///
/// A value is shown in binary, one of more than 8 logic levels in hexadecimal; one that does not
/// have its port's width, or has other characters, in quotation marks. Without a port the text
/// begins with "nothing". Types and functions that do not exist, shown by number, and values with a
/// quotation mark cannot be read back.
OXAUTILS_EXPORT QString unitText(const MatchUnit& unit);
/// The same with the names of values; with them, `unitFromText` reads it back.
OXAUTILS_EXPORT QString unitText(const MatchUnit& unit, const StateNames& states);

/// The values of `states`, for `unitFromText`. They have to outlive the function.
OXAUTILS_EXPORT ValueNames valueNames(const StateNames& states);

/// Sets `unit`, which has a core, from `text`. False, with the place and what is accepted there in
/// `error`, when that cannot be read; `unit` is then not changed.
///
///     UNIT    = off | on | [TYPE :] PORT COMPARE [, COUNTER]
///             | VALUE [, COUNTER] | VALUE..VALUE [, COUNTER] | COUNTER
///     PORT    = T0 to T15 | nothing
///     COMPARE = (== | != | < | <= | > | >=) VALUE | [not] in VALUE..VALUE
///             | rises | falls | changes             (of a port of one signal)
///     COUNTER = N times [in a row] [(counter of N bits)]
///
/// Without TYPE the first sufficient type is used, without a counter width the smallest. What a
/// text with PORT does not contain is as in a new unit, except that the text of the unit as it is
/// changes nothing. Other texts keep everything else, also TYPE and the counter's width if they
/// are sufficient. VALUE is the first possible of these:
///
/// - digits 0 1 X R F B N, exactly one for each signal of the port. So `10` is 2 on a port of 2
///   signals and ten on every wider one;
/// - a name known to `names`;
/// - 0b and such digits, or 0x and hexadecimal digits, with X for four X; padded with 0 on the
/// left; - the first form in small letters; - a decimal number of up to 64 bits, without leading 0;
/// - any characters in quotation marks, used unchanged.
///
/// `checkCores` checks whether type, function, value and counter fit together.
OXAUTILS_EXPORT bool unitFromText(
    const QString& text, MatchUnit& unit, QString* error, const ValueNames& names = {});

/// An expression as in files: in upper case and, in a core with `dynamic` ones, without spaces.
OXAUTILS_EXPORT QString expressionFromText(const QString& text, bool dynamic);

}

#endif
