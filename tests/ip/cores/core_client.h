#ifndef TESTS_IP_CORE_CLIENT_H
#define TESTS_IP_CORE_CLIENT_H

#include "random_core.h"

#include <QByteArray>
#include <QByteArrayList>

/// Where the answer to a read lies among a run's TDO characters.
struct Answer {
    int at = 0;
    int length = 0;
    int address = 0;
    int bits = 0; ///< asked for
};

/// What a core answered; bits as characters, in the order of time.
struct Reply {
    bool answered = false;
    bool intact = false; ///< the CRC fits
    QByteArray bits;
};

namespace Register {
enum {
    Identity,
    Fingerprint,
    Status,
    Check,
    Memory,
    Windows,
    Samples,
    Names,
    Command,
    Settings,
    Tables
};
}
namespace Command {
constexpr char kArm[] = "001110", kStop[] = "100011", kForce[] = "111000"; // lowest bit first
}

/// Writes scripts for CoreBench that speak the cores' protocol.
class CoreClient {
public:
    QByteArray script; ///< so far
    int devicesBefore = 0; ///< in the chain, between TDI and this one

    CoreClient();
    void samples(int count) { script += QByteArray(count, 'n'); }
    void edges(int count) { script += QByteArray(count, 'e'); }
    Answer read(int core, int reg, int bits);
    /// Reads again what was addressed last.
    Answer readAgain(int address, int bits);
    Answer write(int core, int reg, const QByteArray& bits);
    void command(int core, const char* bits) { write(core, Register::Command, bits); }
    void address(int core, int reg);
    /// Arms, forces and stops cores at random, their sample clocks in bursts between, and stops
    /// all.
    void hurry(Random& random, int cores);
    /// The bits of a scan that addresses.
    static QByteArray addressBits(int core, int reg);
    /// A data scan as it is; the place of its first TDO character.
    int scan(const QByteArray& bits);

private:
    int m_cycles = 0;

    void cycles(const QByteArray& characters);
};

/// What `tdo` holds for `answer`.
Reply replyOf(const QByteArray& tdo, const Answer& answer);

/// `count` bits of a reply from `first`, as a number.
quint64 number(const QByteArray& bits, int first, int count);

/// The lowest `count` bits of `value` as characters, the lowest first.
QByteArray bitsOf(quint64 value, int count);

/// The CRC-32 that the cores compute over `bits` of a register.
quint32 crcAt(int address, const QByteArray& bits);

/// CRC-32 of `bits` behind those whose CRC-32 is `seed`.
quint32 crcOf(const QByteArray& bits, quint32 seed);

#endif
