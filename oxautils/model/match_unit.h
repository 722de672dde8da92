// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_MATCH_UNIT_H
#define OXAUTILS_MODEL_MATCH_UNIT_H

#include "oxautils/oxautils_export.h"

#include <QList>
#include <QString>

class QDebug;

namespace OXA {

class AoCore;
class TriggerPort;

/// What a match unit's hardware can compare. Files store the number; it may be any number.
enum MatchType : int {
    MatchBasic = 0, ///< equality of logic levels
    MatchBasicEdges = 1, ///< equality of logic levels and edges
    MatchExtended = 2, ///< logic levels, and magnitude with one bound
    MatchExtendedEdges = 3, ///< logic levels and edges, and magnitude with one bound
    MatchRange = 4, ///< logic levels, and magnitude with one bound or two
    MatchRangeEdges = 5, ///< logic levels and edges, and magnitude with one bound or two
};

/// How a match unit compares. Files store the number; it may be any number.
enum MatchFunc : int {
    MatchEqual = 0,
    MatchNotEqual = 1,
    MatchGreater = 2,
    MatchLess = 3,
    MatchGreaterEqual = 4,
    MatchLessEqual = 5,
    MatchInRange = 6,
    MatchNotInRange = 7,
};

/// The text that users see, "Basic" to "Range w/edges"; empty for any other number.
OXAUTILS_EXPORT QString type2string(MatchType type);

/// The text that users see, "==" to "not in range"; empty for any other number.
OXAUTILS_EXPORT QString func2string(MatchFunc func);

/// The functions that hardware of `type` has, ascending; none for any other number.
OXAUTILS_EXPORT QList<int> optionalFunctions(MatchType type);

/// Whether hardware of `type` detects edges.
OXAUTILS_EXPORT bool matchTypeHasEdges(MatchType type);

/// Whether `func` compares with `value0` and `value1`, both inclusive.
OXAUTILS_EXPORT bool isRangeFunction(MatchFunc func);

/// One comparison of a core, bound to one trigger port. Owned by its core.
///
/// Values are texts of the characters 0, 1, X (any), R (rising), F (falling), B (either edge) and
/// N (no edge), most significant first, one for each signal of the bound port.
class OXAUTILS_EXPORT MatchUnit {
public:
    AoCore* core = nullptr; ///< the owner
    int index = 0; ///< 0 to 15; users read it as "M3"
    bool enabled = false; ///< false: it keeps its settings, no expression can use it
    MatchType matchType = MatchBasic; ///< what its hardware can compare
    MatchFunc matchFunc = MatchEqual; ///< one of `optionalFunctions`
    bool counterEnable = false; ///< false: true at every match
    int counterWidth = 2; ///< bits
    int counter = 2; ///< matches until the output is true
    bool continuous = false; ///< count only matches at consecutive samples
    QString value0; ///< the value to compare with; a range's lower bound
    QString value1; ///< a range's upper bound
    TriggerPort* trigger = nullptr; ///< the bound port, one of the core's own, or null
};

/// For the debug log; nothing parses it.
OXAUTILS_EXPORT QDebug operator<<(QDebug debug, const MatchUnit& unit);

}

#endif
