#ifndef OXAUTILS_ENCODING_UNIT_TEXT_H
#define OXAUTILS_ENCODING_UNIT_TEXT_H

#include "oxautils/model/match_unit.h"

#include <functional>

namespace OXA {

/// The bits of the value that `name` stands for at `port`, most significant first; an empty text
/// when the port has no value of that name.
using ValueNames = std::function<QString(const TriggerPort& port, const QString& name)>;

/// What `unit` compares with, as text that `unitFromText` reads back:
///
///     Basic w/edges: T0 == R01000110
///     Extended: T1 > 0x43c
///     Range: T2 not in 10000..10111, 3 times in a row (counter of 4 bits)
///     Basic w/edges: T3 rises
///     off
///
/// A value is shown in binary, one of more than 8 logic levels in hexadecimal; one that is not of
/// its port's width, or holds other characters, in quotation marks as it stands. Without a port the
/// text begins with "nothing". Of what does not exist (a type or function by its number, or a value
/// with a quotation mark in it) the text is for reading only.
OXAUTILS_EXPORT QString unitText(const MatchUnit& unit);

/// Lets `unit`, which has a core, compare with what `text` says. False, with the place and what is
/// accepted there in `error`, when that is no unit; `unit` then stays as it was.
///
///     UNIT    = off | on | [TYPE :] PORT COMPARE [, COUNTER]
///     PORT    = T0 to T15 | nothing
///     COMPARE = (== | != | < | <= | > | >=) VALUE | [not] in VALUE..VALUE
///             | rises | falls | changes             (of a port of one signal)
///     COUNTER = N times [in a row] [(counter of N bits)]
///
/// Without TYPE the first type that suffices is taken, without a width of the counter the least;
/// what the text does not name is as in a new unit, except that "off" and "on" keep everything
/// else, and that a text that says what the unit is already changes nothing. VALUE is the first
/// of these that it can be:
///
/// - digits 0 1 X R F B N, exactly as many as the port has signals: one digit a signal. A decimal
///   number of 0 and 1 never fits a port of as many bits, so `10` is 2 on a port of 2 signals and
///   ten on every wider one;
/// - a name that `names` knows;
/// - 0b and such digits, or 0x and hexadecimal ones, with X for four X; filled with 0 in front;
/// - the first form in small letters;
/// - a decimal number of up to 64 bits, without a 0 in front;
/// - any characters in quotation marks, which are taken as they stand.
///
/// Whether type, function, value and counter suit each other is what `checkCores` finds out.
OXAUTILS_EXPORT bool unitFromText(
    const QString& text, MatchUnit& unit, QString* error, const ValueNames& names = {});

/// An expression as files have it: in capitals and, in a core with `dynamic` ones, without blanks.
OXAUTILS_EXPORT QString expressionFromText(const QString& text, bool dynamic);

}

#endif
