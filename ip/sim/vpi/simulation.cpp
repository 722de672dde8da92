// SPDX-License-Identifier: Apache-2.0
#include "stopped.h"

#include "clients/simulation.h"

#include <vpi_user.h>

#include <cstring>

namespace oxa_target {

namespace {

bool stopped = false;

}

const char* option(const char* name)
{
    s_vpi_vlog_info info = {};
    vpi_get_vlog_info(&info);
    const size_t length = std::strlen(name);
    for (int i = 0; i < info.argc; ++i) {
        const char* argument = info.argv[i];
        if (argument[0] == '+' && std::strncmp(argument + 1, name, length) == 0
            && argument[length + 1] == '=')
            return argument + length + 2;
    }
    return nullptr;
}

void say(const std::string& text)
{
    vpi_printf("oxa_target: %s\n", text.c_str());
    vpi_flush();
}

void flush() { vpi_flush(); }

bool isStopped() { return stopped; }

void stop(const std::string& why)
{
    stopped = true;
    if (!why.empty()) {
        vpi_printf("oxa_target: %s\n", why.c_str());
        vpip_set_return_value(1);
    }
    vpi_control(vpiFinish, 0);
}

}
