// SPDX-License-Identifier: Apache-2.0
#include "instances.h"

#include <vpi_user.h>

#include <cctype>
#include <cstring>

namespace oxa_target {

namespace {

// Whether it is an identifier with or without the index of a generate loop or of an array of
// instances, "[3]".
bool isPlain(const std::string& name)
{
    const auto isOneOf = [](char c, const char* others) {
        return std::isalpha(static_cast<unsigned char>(c)) || std::strchr(others, c);
    };
    size_t end = 0;
    while (end < name.size() && isOneOf(name[end], end == 0 ? "_" : "_$0123456789"))
        ++end;
    if (end == 0 || end == name.size())
        return end > 0;
    const size_t close = name.find_first_not_of("-0123456789", end + 1);
    return name[end] == '[' && close == name.size() - 1 && name[close] == ']' && close > end + 1;
}

// vvp tells names without the marks of an escaped one.
std::string reference(const std::string& name) { return isPlain(name) ? name : '\\' + name + ' '; }

void printBelow(vpiHandle scope, const std::string& path, const std::string& module)
{
    const vpiHandle inner = vpi_iterate(scope ? vpiInternalScope : vpiModule, scope);
    while (const vpiHandle item = inner ? vpi_scan(inner) : nullptr) {
        const PLI_INT32 type = vpi_get(vpiType, item);
        if (type != vpiModule && type != vpiGenScope)
            continue;
        const std::string here = path + reference(vpi_get_str(vpiName, item));
        if (type == vpiModule && module == vpi_get_str(vpiDefName, item))
            vpi_printf("oxa_target: instance %s\n", here.c_str());
        printBelow(item, here + '.', module);
    }
}

}

void printInstances(const std::string& module) { printBelow(nullptr, {}, module); }

}
