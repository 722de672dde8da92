// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/bus_range.h"

namespace OXA_CAPTURE {

OXA::BitRange busRange(const QStringList& bits, const QString& name)
{
    OXA::BitRange range;
    return OXA::bitRange(bits, range) ? range : OXA::BitRange {name, int(bits.size()) - 1, 0};
}

}
