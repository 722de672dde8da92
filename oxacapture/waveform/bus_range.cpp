// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/bus_range.h"

#include <cstdlib>

namespace OXA_CAPTURE {

namespace {

/// The end of the range that begins with the name at `from`, which may be alone.
int endOfRange(const QStringList& names, int from)
{
    OXA::BitRange range {names.at(from), 0, 0};
    QString next = names.value(from + 1);
    const bool isRange = takeIndex(range.base, range.msb) && takeIndex(next, range.lsb)
        && std::abs(qint64(range.msb) - range.lsb) == 1;
    int end = from + 1;
    while (isRange && end < names.size() && names.at(end) == range.bitName(end - from))
        ++end;
    return end;
}

}

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

QList<OXA::SignalItem> groupedBits(const QStringList& names)
{
    QList<OXA::SignalItem> items;
    for (int from = 0; from < names.size();) {
        const int end = endOfRange(names, from);
        OXA::SignalItem item;
        item.name = names.at(from);
        OXA::BitRange range;
        if (end - from > 1 && OXA::bitRange(names.mid(from, end - from), range))
            item = busItem(range, end - from);
        items += item;
        from = end;
    }
    return items;
}

}
