// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_CORE_IDENTITY_H
#define OXACAPTURE_TARGET_CORE_IDENTITY_H

#include "oxacapture/target/bit_string.h"
#include "oxacapture/trigger/core_plan.h"

#include <QStringList>

namespace OXA_CAPTURE {

/// The identity register of a core in a target (docs/jtag-protocol.md).
struct CoreIdentity {
    /// A trigger port.
    struct Port {
        int number = 0; ///< 0 to 15
        int signalCount = 0; ///< bits of its value
    };
    /// A match unit.
    struct Unit {
        int number = 0; ///< 0 to 15
        int port = 0; ///< the number of the port that it watches
        OXA::MatchType matchType = OXA::MatchBasic; ///< what it can compare
        int counterBits = 0; ///< 0: it has no counter
    };

    int position = 0; ///< of the core in the wrapper
    bool lite = false; ///< a Lite core; else a Standard one
    bool fallingEdge = false; ///< samples at falling edges of the sample clock
    bool armedAtPowerUp = false; ///< captures from power-up on
    bool dynamic = false; ///< expressions are tables that can be rewritten
    OXA::CoreStorage::Keep keep = OXA::CoreStorage::All; ///< what makes a sample be stored
    int gapBits = 0; ///< of a word in memory for the samples passed over in front of it
    bool marksEnds = false; ///< a word has a mark for the last sample of its window
    int signalCount = 0; ///< bits of a sample
    int expressions = 0; ///< levels of the sequence
    int addressBits = 0; ///< of the memory
    qint64 depth = 0; ///< words of the memory
    qint64 mostWindows = 0; ///< of a run
    std::vector<Port> ports; ///< ascending
    std::vector<Unit> units; ///< ascending
    /// Positions of the cores whose triggers can force it, ascending.
    QList<int> forcedBy {};
    bool stamps = false; ///< each window has the number of its trigger sample in the run

    /// Bits of a word in memory: a sample, its gap, the marks of a window's end and of a trigger.
    int wordBits() const { return lite ? signalCount : unmarkedBits() + (marksEnds ? 2 : 1); }
    /// Bits of a word in memory without its marks.
    int unmarkedBits() const { return signalCount + gapBits; }

    /// Bits of a window's word: whether it is short, was forced by a core, and its stamp.
    int windowBits() const { return stampAt() + (stamps ? kStampBits : 0); }
    /// Where the stamp is in it; in front of it, the bit of a core that others force.
    int stampAt() const { return forcedBy.isEmpty() ? 1 : 2; }
    static constexpr int kStampBits = 32; ///< of a window's word
};

/// Which samples a core stores: "changes with gaps of 16 bits and a limit".
OXACAPTURE_EXPORT QString storageText(const CoreIdentity& core);

/// Bits of a number from 0 to `count` - 1.
int bitsToCount(qint64 count);

/// Bits of the identity register that every core has.
constexpr int kIdentityHeadBits = 192;
/// Bits of the whole register, found from these.
OXACAPTURE_EXPORT int identityBits(const BitString& head);

/// Decodes the whole register of the core at `position`; false, with `error`, when it is not that
/// of an analyzer core.
OXACAPTURE_EXPORT bool parseIdentity(
    const BitString& bits, int position, CoreIdentity& identity, QString* error);

/// The identity of `core` when it is built at `position` of the wrapper.
OXACAPTURE_EXPORT CoreIdentity identityOf(const CorePlan& core, int position);

/// What of a core is compared.
enum class Compared {
    All,
    Fixed, ///< what no settings (`settingsFaults`) and no tables can change
};

/// How the core in a target differs from the `wanted` one: "8 data signals instead of 9".
OXACAPTURE_EXPORT QStringList differences(
    const CoreIdentity& is, const CoreIdentity& wanted, Compared compared = Compared::All);

}

#endif
