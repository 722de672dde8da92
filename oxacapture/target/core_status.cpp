// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/core_status.h"

#include "oxautils/model/limits.h"

namespace OXA_CAPTURE {

namespace {

constexpr int kLiteBits = 96;
constexpr int kHeadBits = 160;
constexpr int kMatchBits = 8;

// A count is sent as the state of a shift register with feedback, which begins with 1 and ends with
// 0; bit 0 is inverted.
int countOf(quint8 sent)
{
    constexpr int kMost = 255;
    const quint8 wanted = sent ^ 1;
    int count = 0;
    for (quint8 state = 1; state != wanted && count < kMost; ++count) {
        const bool feedback = (state >> 7 ^ state >> 5 ^ state >> 4 ^ state >> 3) & 1;
        state = quint8(state << 1 | int(feedback));
    }
    return count;
}

// The position of the bit that is set, from `from` on.
int levelAt(const BitString& bits, int from)
{
    int found = 0;
    for (int level = 0; level < OXA::kMostExpressions; ++level) {
        if (bits.at(from + level))
            found = level;
    }
    return found;
}

}

int statusBits(const CoreIdentity& identity)
{
    return identity.lite ? kLiteBits : kHeadBits + kMatchBits * int(identity.units.size());
}

CoreStatus parseStatus(const BitString& bits, const CoreIdentity& identity)
{
    CoreStatus status;
    status.armed = bits.at(0);
    status.running = bits.at(1);
    status.finished = bits.at(2);
    status.complete = bits.at(10);
    status.position = qint64(bits.number(64, 32));
    status.snapshot.fresh = bits.at(4);
    if (identity.lite)
        return status;
    status.open = bits.at(8);
    status.wentRound = bits.at(9);
    status.level = levelAt(bits, 32);
    status.snapshot.open = bits.at(16);
    status.snapshot.level = levelAt(bits, 48);
    status.snapshot.windows = qint64(bits.number(128, 32));
    status.windows = qint64(bits.number(96, 32));
    for (size_t unit = 0; unit < identity.units.size(); ++unit)
        status.snapshot.matches.push_back(
            countOf(quint8(bits.number(kHeadBits + kMatchBits * int(unit), kMatchBits))));
    return status;
}

}
