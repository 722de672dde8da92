// SPDX-License-Identifier: Apache-2.0
#include "nets.h"

#include <cstring>

namespace oxa_target {

void putBit(vpiHandle net, bool bit)
{
    s_vpi_value value = {};
    value.format = vpiScalarVal;
    value.value.scalar = bit ? vpi1 : vpi0;
    vpi_put_value(net, &value, nullptr, vpiNoDelay);
}

void putWords(
    vpiHandle net, const std::vector<uint32_t>& words, const std::vector<uint32_t>& unknown)
{
    std::vector<s_vpi_vecval> vector(words.size());
    for (size_t i = 0; i < words.size(); ++i) {
        const uint32_t x = unknown.empty() ? 0 : unknown[i];
        vector[i].aval = PLI_INT32(words[i] | x);
        vector[i].bval = PLI_INT32(x);
    }
    s_vpi_value value = {};
    value.format = vpiVectorVal;
    value.value.vector = vector.data();
    vpi_put_value(net, &value, nullptr, vpiNoDelay);
}

bool isHigh(vpiHandle net)
{
    s_vpi_value value = {};
    value.format = vpiBinStrVal;
    vpi_get_value(net, &value);
    return std::strchr(value.value.str, '1') != nullptr;
}

bool WatchedNets::look(const std::string& name, std::string& levels)
{
    Watched* watched = watch(name);
    if (!watched)
        return false;
    const bool high = isHigh(watched->net);
    levels += !high ? '0' : watched->wasLow ? '2' : '1';
    watched->wasLow = !high;
    return true;
}

// Null when there is none.
WatchedNets::Watched* WatchedNets::watch(const std::string& name)
{
    const auto known = m_nets.find(name);
    if (known != m_nets.end())
        return &known->second;
    std::string text = name;
    vpiHandle net = vpi_handle_by_name(text.data(), nullptr);
    if (!net)
        return nullptr;
    Watched& watched = m_nets[name];
    watched.net = net;
    watched.changes = &m_changed;
    s_vpi_time time = {};
    time.type = vpiSuppressTime;
    s_vpi_value value = {};
    value.format = vpiSuppressVal;
    s_cb_data callback = {};
    callback.reason = cbValueChange;
    callback.obj = net;
    callback.time = &time;
    callback.value = &value;
    callback.user_data = reinterpret_cast<PLI_BYTE8*>(&watched);
    callback.cb_rtn = [](p_cb_data data) -> PLI_INT32 {
        Watched& seen = *reinterpret_cast<Watched*>(data->user_data);
        seen.wasLow = seen.wasLow || !isHigh(seen.net);
        *seen.changes = true;
        return 0;
    };
    vpi_register_cb(&callback);
    return &watched;
}

}
