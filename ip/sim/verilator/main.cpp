// SPDX-License-Identifier: Apache-2.0
// A simulated target whose design was compiled by Verilator:
//
//   oxa_verilated DESIGN.so +oxa_jtag=ADDRESS +oxa_control=ADDRESS +oxa_clocks=LEVELS
//
// with options as the plugin for vvp has them, and the level of each clock before its first edge,
// the first clock's first, as in 10: a change of it would be an edge. The library exports
// oxa_ports, one for each Port, oxa_evaluate and oxa_looked.

#include "clients/clients.h"

#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <sstream>

namespace oxa_target {

namespace {

char** options = nullptr; // ends with a null pointer
bool failed = false;

enum Port { Tdo = PadCount, Values, Clocks, Looked, PortCount };

/// A port of the design, in the way in which Verilator keeps it: its least significant byte first.
struct PortBytes {
    void* bytes;
    size_t size;
};

/// The names of nets, separated by spaces. Bit i of the port Looked has the level of net i.
using Names = const char*;

class VerilatedDesign : public Design {
public:
    bool load(const char* path);
    size_t words(Port port) const { return (m_ports[port].size + 3) / 4; }
    void begin(const char* clocks); ///< with these levels; null: all low
    void settle();

    void put(Pad pad, bool level) override { *byte(pad) = level ? 1 : 0; }
    bool tdo() override { return *byte(Tdo) != 0; }
    void putValues(const std::vector<uint32_t>& values) override { set(Values, values); }
    void putClocks(
        const std::vector<uint32_t>& clocks, const std::vector<uint32_t>& unknown) override;
    bool look(const std::string& name, std::string& levels) override;

private:
    /// A net, and its bit of the port Looked.
    struct Net {
        std::string name;
        size_t bit;
        bool wasLow; // at the previous `look`, or since
    };

    unsigned char* byte(int port) const { return static_cast<unsigned char*>(m_ports[port].bytes); }
    bool isHigh(const Net& net) const { return byte(Looked)[net.bit / 8] >> net.bit % 8 & 1; }
    void set(Port port, const std::vector<uint32_t>& words);

    PortBytes* m_ports = nullptr;
    void (*m_evaluate)() = nullptr;
    std::vector<Net> m_nets;
};

bool VerilatedDesign::load(const char* path)
{
    void* library = dlopen(path, RTLD_NOW);
    const auto symbol
        = [library](const char* name) { return library ? dlsym(library, name) : nullptr; };
    m_ports = static_cast<PortBytes*>(symbol("oxa_ports"));
    m_evaluate = reinterpret_cast<void (*)()>(symbol("oxa_evaluate"));
    const auto* names = static_cast<Names*>(symbol("oxa_looked"));
    if (!m_ports || !m_evaluate || !names) {
        const char* error = dlerror();
        stop(error ? error : "it is not a design");
        return false;
    }
    std::istringstream list(*names);
    for (std::string name; list >> name;)
        m_nets.push_back({name, m_nets.size(), false});
    return true;
}

void VerilatedDesign::begin(const char* clocks)
{
    for (size_t i = 0; clocks && clocks[i] && i / 8 < m_ports[Clocks].size; ++i) {
        if (clocks[i] == '1')
            byte(Clocks)[i / 8] |= static_cast<unsigned char>(1U << i % 8);
    }
    settle();
}

void VerilatedDesign::settle()
{
    m_evaluate();
    for (Net& net : m_nets)
        net.wasLow = net.wasLow || !isHigh(net);
}

void VerilatedDesign::set(Port port, const std::vector<uint32_t>& words)
{
    std::memcpy(m_ports[port].bytes, words.data(), m_ports[port].size);
}

// A clock without an edge keeps the level with which it began.
void VerilatedDesign::putClocks(
    const std::vector<uint32_t>& clocks, const std::vector<uint32_t>& unknown)
{
    std::vector<uint32_t> levels(clocks.size());
    std::memcpy(levels.data(), m_ports[Clocks].bytes, m_ports[Clocks].size);
    for (size_t i = 0; i < clocks.size(); ++i)
        levels[i] = (levels[i] & unknown[i]) | (clocks[i] & ~unknown[i]);
    set(Clocks, levels);
}

bool VerilatedDesign::look(const std::string& name, std::string& levels)
{
    for (Net& net : m_nets) {
        if (net.name != name)
            continue;
        const bool high = isHigh(net);
        levels += !high ? '0' : net.wasLow ? '2' : '1';
        net.wasLow = !high;
        return true;
    }
    return false;
}

}

const char* option(const char* name)
{
    const size_t length = std::strlen(name);
    for (char** argument = options; *argument; ++argument) {
        const char* text = *argument;
        if (text[0] == '+' && std::strncmp(text + 1, name, length) == 0 && text[length + 1] == '=')
            return text + length + 2;
    }
    return nullptr;
}

void say(const std::string& text)
{
    std::printf("oxa_target: %s\n", text.c_str());
    flush();
}

void flush() { std::fflush(stdout); }

void stop(const std::string& why)
{
    failed = !why.empty();
    if (failed)
        say(why);
}

}

int main(int argc, char** argv)
{
    using namespace oxa_target;
    options = argv + argc;
    if (argc < 2) {
        stop("the library of a design is required");
        return 1;
    }
    options = argv + 2;
    VerilatedDesign design;
    if (!design.load(argv[1]))
        return 1;
    design.begin(option("oxa_clocks"));
    Clients clients(design, design.words(Values), design.words(Clocks), false);
    if (clients.open()) {
        do
            design.settle();
        while (clients.act());
    }
    return failed ? 1 : 0;
}
