#include "core_client.h"

#include <iterator>

namespace {

constexpr int kSpare = 40; // zeros behind a read's end: its CRC and the ways of all control tops

}

CoreClient::CoreClient()
{
    cycles("bbbbb0"); // reset, then idle
    cycles("aa00"
           "0001a"
           "a0"); // the instruction ER1
}

void CoreClient::cycles(const QByteArray& characters)
{
    script += characters;
    m_cycles += characters.size();
}

int CoreClient::scan(const QByteArray& bits)
{
    cycles("a00");
    const int first = m_cycles;
    cycles(bits.chopped(1));
    cycles(bits.endsWith('1') ? "b" : "a");
    cycles("a0");
    return first;
}

QByteArray CoreClient::addressBits(int core, int reg)
{
    constexpr int kGuards[] = {3, 5, 6, 7, 9, 10, 11, 12};
    const int address = core << 4 | reg;
    int guard = 15;
    for (int bit = 0; bit < 8; ++bit)
        guard ^= address >> bit & 1 ? kGuards[bit] : 0;
    return "11" + bitsOf(quint64(address | guard << 8), 12);
}

void CoreClient::address(int core, int reg)
{
    scan(QByteArray(devicesBefore, '0') + addressBits(core, reg));
}

void CoreClient::hurry(Random& random, int cores)
{
    constexpr int kBursts[] = {0, 0, 0, 1, 2, 3, 4, 20};
    constexpr int kUpdate = 12; // cycles: the end of a scan of a command
    const int steps = between(random, 0, 3);
    for (int step = 0; step < steps + cores; ++step) {
        const int core = step < steps ? between(random, 0, cores - 1) : step - steps;
        for (const char* bits : {Command::kArm, Command::kForce, Command::kStop}) {
            if (bits != Command::kForce || between(random, 0, 2))
                command(core, bits);
            const int burst = kBursts[between(random, 0, int(std::size(kBursts)) - 1)];
            script.insert(script.size() - between(random, 0, kUpdate), QByteArray(burst, 'e'));
        }
    }
}

Answer CoreClient::readAgain(int address, int bits)
{
    const QByteArray asking = QByteArray(devicesBefore, '0') + "10" + QByteArray(bits, '0') + '1'
        + QByteArray(kSpare, '0');
    return {scan(asking), asking.size(), address, bits};
}

Answer CoreClient::read(int core, int reg, int bits)
{
    address(core, reg);
    return readAgain(core << 4 | reg, bits);
}

Answer CoreClient::write(int core, int reg, const QByteArray& bits)
{
    address(core, reg);
    const QByteArray data = QByteArray(devicesBefore, '0') + "10" + bits;
    return {scan(data), data.size(), core << 4 | reg, 0};
}

Reply replyOf(const QByteArray& tdo, const Answer& answer)
{
    Reply reply;
    const QByteArray all = tdo.mid(answer.at, answer.length);
    const int begin = all.indexOf('1');
    reply.answered = begin >= 0;
    if (!reply.answered)
        return reply;
    reply.bits = all.mid(begin + 1, answer.bits);
    const QByteArray crc = all.mid(begin + 1 + answer.bits, 32);
    reply.intact = crc == bitsOf(crcAt(answer.address, reply.bits), 32)
        && !all.mid(begin + 33 + answer.bits).contains('1');
    return reply;
}

quint64 number(const QByteArray& bits, int first, int count)
{
    quint64 value = 0;
    for (int i = count - 1; i >= 0; --i)
        value = value << 1 | quint64(bits.at(first + i) == '1');
    return value;
}

QByteArray bitsOf(quint64 value, int count)
{
    QByteArray bits;
    for (int i = 0; i < count; ++i)
        bits += value >> i & 1 ? '1' : '0';
    return bits;
}

quint32 crcAt(int address, const QByteArray& bits)
{
    return crcOf(bitsOf(quint64(address), 8) + bits, 0);
}

quint32 crcOf(const QByteArray& bits, quint32 seed)
{
    quint32 crc = ~seed;
    for (const char bit : bits)
        crc = crc >> 1 ^ ((crc ^ quint32(bit == '1')) & 1 ? 0xedb88320U : 0);
    return ~crc;
}
