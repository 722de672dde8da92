// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/value_names.h"

#include "oxautils/config/names_file.h"
#include "oxautils/model/bit_range.h"
#include "oxautils/model/trigger_port.h"

namespace OXA {

namespace {

QString valueOf(
    const DesignIndex& index, const TriggerPort& port, const QString& name, QStringList& known)
{
    const QStringList bits = port.singleSignals();
    const int first = bits.isEmpty() ? -1 : index.bit(bits.first()).signal;
    if (first < 0 || index.design().items.at(first).width != bits.size())
        return {};
    const DesignSignal& signal = index.design().items.at(first);
    QString digits;
    QStringList names;
    for (const auto& state : signal.states) {
        digits = state.second == name ? state.first : digits;
        names += state.second;
    }
    QString value;
    for (const QString& bitName : bits) {
        const DesignBit bit = index.bit(bitName);
        if (bit.signal != first)
            return {};
        if (digits.size() == signal.width)
            value += digits.at(signal.width - 1 - bit.position);
    }
    known = names;
    return value;
}

}

StateNames statesOf(const DesignIndex& index, const QStringList& bits)
{
    StateNames all;
    for (const QString& bit : bits) {
        QString name = bit;
        int position = 0;
        takeIndex(name, position);
        const int number = all.contains(name) ? -1 : index.bit(bit).signal;
        if (number < 0 || index.design().items.at(number).states.isEmpty())
            continue;
        const DesignSignal& signal = index.design().items.at(number);
        SignalStates& states = all[name];
        states.range = signal.rangeText();
        for (const auto& state : signal.states) {
            if (!binaryDigits("0b" + state.first).isEmpty())
                states.values.insert(state.second, state.first);
        }
    }
    return all;
}

ValueNames valueNames(const DesignIndex& index)
{
    return [&index](const TriggerPort& port, const QString& name, QStringList& known) {
        return valueOf(index, port, name, known);
    };
}

}
