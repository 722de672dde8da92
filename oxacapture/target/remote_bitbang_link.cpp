// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/remote_bitbang_link.h"

namespace OXA_CAPTURE {

namespace {

constexpr int kTimeout = 10000; // ms without any answer
constexpr int kSlowestBit = 20; // ms: the netlist of a large design, simulated on a busy machine

// A cycle with TMS low is "04", with TMS high "26"; TDI adds 1 to both.
constexpr char kReset[] = "262626262604";
constexpr char kToShiftIr[] = "26260404";
constexpr char kToShiftDr[] = "260404";
constexpr char kFromExitToIdle[] = "2604";

}

bool RemoteBitbangLink::connectTo(const QString& address)
{
    return m_socket.connectTo(address) || fail(m_socket.error());
}

bool RemoteBitbangLink::reset() { return exchange(kReset, 0, nullptr); }

bool RemoteBitbangLink::scanIr(const BitString& out) { return scan(kToShiftIr, out, nullptr); }

bool RemoteBitbangLink::scanDr(const BitString& out, BitString* in)
{
    return scan(kToShiftDr, out, in);
}

bool RemoteBitbangLink::scan(const char* entry, const BitString& out, BitString* in)
{
    QByteArray pads = entry;
    pads.reserve(3 * out.size() + 16);
    for (int bit = 0; bit < out.size(); ++bit) {
        const int tms = bit == out.size() - 1 ? 2 : 0; // leaves Shift with the last bit
        const char low = char('0' + tms + (out.at(bit) ? 1 : 0));
        pads += low;
        if (in)
            pads += 'R';
        pads += char(low + 4);
    }
    return exchange(pads + kFromExitToIdle, in ? out.size() : 0, in);
}

bool RemoteBitbangLink::exchange(const QByteArray& pads, int bits, BitString* in)
{
    QByteArray answer;
    const auto isWhole = [bits](const QByteArray& so) { return so.size() >= bits; };
    const qint64 time = kTimeout + qint64(kSlowestBit) * (pads.size() / 2);
    if (!m_socket.exchange(pads, isWhole, answer, {kTimeout, time, bits}))
        return fail("JTAG: " + m_socket.error());
    if (in)
        *in = {};
    for (const char bit : qAsConst(answer)) {
        if (bit != '0' && bit != '1')
            return fail("JTAG: the answer is not in the protocol remote_bitbang");
        if (in)
            in->append(bit == '1');
    }
    return true;
}

}
