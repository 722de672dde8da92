#include "capture/core_status.h"

namespace OXA_CAPTURE {

namespace {

constexpr int kLiteBits = 96;
constexpr int kHeadBits = 160;
constexpr int kMatchBits = 8;
constexpr int kMostLevels = 16;

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
    if (identity.lite)
        return status;
    status.open = bits.at(8);
    status.wentRound = bits.at(9);
    for (int level = 0; level < kMostLevels; ++level) {
        if (bits.at(32 + level))
            status.level = level;
    }
    status.windows = qint64(bits.number(96, 32));
    for (size_t unit = 0; unit < identity.units.size(); ++unit)
        status.matches.push_back(int(bits.number(kHeadBits + kMatchBits * int(unit), kMatchBits)));
    return status;
}

}
