// SPDX-License-Identifier: Apache-2.0
#include "target.h"

#include "power_up.h"

#include <cstring>

namespace oxa_target {

namespace {

size_t wordsOf(vpiHandle variable) { return size_t(vpi_get(vpiSize, variable) + 31) / 32; }

}

Target::Target(vpiHandle scope, const vpiHandle (&arguments)[ArgumentCount])
    : m_scope(option("oxa_settle") ? scope : nullptr)
    , m_hasBench(option("oxa_bench"))
    , m_clients(*this, wordsOf(arguments[Values]), wordsOf(arguments[Clocks]), m_hasBench)
{
    std::memcpy(m_arguments, arguments, sizeof m_arguments);
}

bool Target::start()
{
    if (!m_clients.open())
        return false;
    sleep();
    return true;
}

// Called when the design is stable: executes the next action, and lets time advance.
void Target::wake()
{
    if (m_scope) { // after all initial blocks
        settleBelow(m_scope);
        m_scope = nullptr;
    } else if (m_clients.act()) {
        m_timePasses = m_clients.letsTimePass();
    } else {
        return stop({});
    }
    sleep();
}

// Waits for the design, which takes no simulation time to answer.
void Target::sleep()
{
    if (!m_hasBench)
        callBack(cbAfterDelay);
    else
        callBack(m_timePasses ? cbNextSimTime : cbReadWriteSynch);
}

void Target::callBack(PLI_INT32 reason)
{
    s_vpi_time delay = {};
    delay.type = vpiSimTime;
    delay.low = reason == cbAfterDelay ? 1 : 0;
    s_cb_data callback = {};
    callback.reason = reason;
    callback.time = &delay;
    callback.user_data = reinterpret_cast<PLI_BYTE8*>(this);
    callback.cb_rtn = [](p_cb_data data) -> PLI_INT32 {
        Target& self = *reinterpret_cast<Target*>(data->user_data);
        if (!self.m_timePasses)
            self.wake();
        else { // the new time begins: its events come first
            self.m_timePasses = false;
            self.sleep();
        }
        return 0;
    };
    vpi_register_cb(&callback);
}

void Target::put(Pad pad, bool level) { putBit(m_arguments[pad], level); }

bool Target::tdo()
{
    s_vpi_value value = {};
    value.format = vpiScalarVal;
    vpi_get_value(m_arguments[Tdo], &value);
    return value.value.scalar == vpi1;
}

void Target::putValues(const std::vector<uint32_t>& values)
{
    putWords(m_arguments[Values], values, {});
}

void Target::putClocks(const std::vector<uint32_t>& clocks, const std::vector<uint32_t>& unknown)
{
    putWords(m_arguments[Clocks], clocks, unknown);
}

bool Target::look(const std::string& name, std::string& levels)
{
    return m_watched.look(name, levels);
}

}
