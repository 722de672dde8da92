// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/design.h"

namespace OXA {

QString DesignSignal::bitName(int position) const
{
    if (!isVector())
        return path;
    return path + '[' + QString::number(indexAt(position)) + ']';
}

QString DesignSignal::rangeText() const
{
    if (!isVector())
        return {};
    return '[' + QString::number(firstIndex()) + ':' + QString::number(lastIndex()) + ']';
}

QString DesignSignal::kindText() const
{
    static constexpr const char* kDirections[] = {"", "input", "output", "inout"};
    if (direction != Inside)
        return kDirections[direction];
    if (isMemory())
        return "memory";
    return isRegister() ? "register" : "wire";
}

QString Design::clockText(const DesignSignal& signal) const
{
    if (!signal.isRegister())
        return {};
    return (signal.fallingEdge ? "falling edge of " : "rising edge of ") + clocks.at(signal.clock);
}

}
