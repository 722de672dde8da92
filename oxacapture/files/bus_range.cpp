// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/bus_range.h"

namespace OXA_CAPTURE {

OXA::BitRange busRange(const QStringList& bits, const QString& name)
{
    OXA::BitRange range;
    return OXA::bitRange(bits, range) ? range : OXA::BitRange {name, int(bits.size()) - 1, 0};
}

OXA::SignalItem busItem(const OXA::BitRange& range, int width)
{
    OXA::SignalItem bus;
    bus.name = range.base;
    for (int place = 0; place < width; ++place) {
        OXA::SignalItem bit;
        bit.name = range.bitName(place);
        bus.subItems += bit;
    }
    return bus;
}

}
