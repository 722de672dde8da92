// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/state_names.h"

#include "oxautils/model/bit_range.h"

namespace OXA {

bool operator==(const SignalStates& a, const SignalStates& b)
{
    return a.range == b.range && a.values == b.values;
}

QMap<QString, QString> valuesOf(const StateNames& states, const QStringList& bits)
{
    QMap<QString, QString> values;
    BitRange range;
    const bool isVector = bitRange(bits, range);
    if (!isVector && bits.size() != 1)
        return values;
    const SignalStates& own = states.value(range.base);
    if (isVector && !own.range.isEmpty() && own.range != range.text())
        return values;
    const int width = int(bits.size());
    for (auto value = own.values.begin(); value != own.values.end(); ++value) {
        const bool fits = !value->left(qMax(0, int(value->size()) - width)).contains('1');
        if (fits)
            values.insert(value.key(), value->right(width).rightJustified(width, '0'));
    }
    return values;
}

QHash<QString, QString> statesOf(const StateNames& states, const QStringList& bits)
{
    QHash<QString, QString> names;
    const QMap<QString, QString> values = valuesOf(states, bits);
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (!names.contains(*value))
            names.insert(*value, value.key());
    }
    return names;
}

}
