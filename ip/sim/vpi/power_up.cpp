// SPDX-License-Identifier: Apache-2.0
#include "power_up.h"

#include <string>

namespace oxa_target {

namespace {

void settleValue(vpiHandle variable)
{
    s_vpi_value value = {};
    value.format = vpiBinStrVal;
    vpi_get_value(variable, &value);
    std::string bits = value.value.str;
    if (bits.find_first_not_of("01") == std::string::npos)
        return;
    for (char& bit : bits)
        bit = bit == '1' ? '1' : '0';
    value.value.str = bits.data();
    vpi_put_value(variable, &value, nullptr, vpiNoDelay);
}

template <typename Function> void forEach(PLI_INT32 kind, vpiHandle scope, Function function)
{
    const vpiHandle items = vpi_iterate(kind, scope);
    while (const vpiHandle item = items ? vpi_scan(items) : nullptr)
        function(item);
}

}

void settleBelow(vpiHandle scope)
{
    forEach(vpiInternalScope, scope, [](vpiHandle inner) {
        forEach(vpiReg, inner, settleValue);
        forEach(vpiMemory, inner,
            [](vpiHandle memory) { forEach(vpiMemoryWord, memory, settleValue); });
        settleBelow(inner);
    });
}

}
