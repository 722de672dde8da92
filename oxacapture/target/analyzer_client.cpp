// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/analyzer_client.h"

#include "oxacapture/target/scan_sum.h"
#include "oxacapture/target/settings_register.h"

#include "oxautils/model/limits.h"

namespace OXA_CAPTURE {

namespace {

enum Register {
    Identity = 0,
    Fingerprint = 1,
    Status = 2,
    Check = 3,
    Memory = 4,
    Windows = 5,
    Samples = 6,
    Names = 7,
    Command = 8,
    Settings = 9,
    Tables = 10,
};

constexpr const char* kRegisterNames[] = {"identity", "fingerprint", "status", "check", "memory",
    "windows", "samples", "names", "command", "settings", "tables"};

constexpr int kCrcBits = 32;
constexpr int kCommandBits = 6;
constexpr int kMostDelay = 24; // bits from a request to its answer, other devices included
constexpr int kReadBits = 2 + 1 + kCrcBits + kMostDelay; // of a scan, beside those read
constexpr int kAttempts = 3;
// Another client's scan may come between a write and its check, which then reads the result of that
// scan.
constexpr int kWriteAttempts = 12;

constexpr int kAddressBits = 8;
constexpr int kGuardBits = 4;
constexpr int kGuards[kAddressBits] = {3, 5, 6, 7, 9, 10, 11, 12};

int addressOf(int core, int reg) { return core << 4 | reg; }

// Detects a flipped bit in an address.
quint64 guardOf(int address)
{
    int guard = 15;
    for (int bit = 0; bit < kAddressBits; ++bit)
        guard ^= address >> bit & 1 ? kGuards[bit] : 0;
    return quint64(guard);
}

// The scan that addresses a register.
BitString address(int core, int reg)
{
    BitString bits(0b11, 2);
    bits.append(quint64(addressOf(core, reg)), kAddressBits);
    bits.append(guardOf(addressOf(core, reg)), kGuardBits);
    return bits;
}

// A scan that begins with these two bits transfers data.
BitString dataScan() { return BitString(0b01, 2); }

// The start of the requested data: after the first one bit.
int answerBegin(const BitString& in) { return in.zerosFrom(0) + 1; }

}

AnalyzerClient::AnalyzerClient(JtagLink& link, BitString instruction)
    : m_link(link)
    , m_instruction(std::move(instruction))
{
}

bool AnalyzerClient::fail(int core, const QString& error)
{
    m_error = m_names.value(core, QString("core at position %1").arg(core)) + ": " + error;
    return false;
}

bool AnalyzerClient::begin()
{
    m_error.clear();
    if (m_link.reset() && m_link.scanIr(m_instruction))
        return true;
    m_error = m_link.error();
    return false;
}

// On a shared link, another program may have loaded another instruction.
bool AnalyzerClient::select(int core)
{
    return m_link.scanIr(m_instruction) || fail(core, m_link.error());
}

// Addresses the register, and scans it.
bool AnalyzerClient::scan(int core, int reg, const BitString& out, BitString& in)
{
    return m_link.scanDrAfter(address(core, reg), out, &in) || fail(core, m_link.error());
}

// Reads the register behind `delay` zeros. False when the link fails; else `answer` is the kind of
// answer.
bool AnalyzerClient::tryRead(
    int core, int reg, int bits, BitString& data, Answer& answer, int delay)
{
    BitString out;
    for (int bit = 0; bit < delay; ++bit)
        out.append(false);
    out.append(dataScan());
    for (int bit = 0; bit < bits; ++bit)
        out.append(false);
    out.append(true); // requests the checksum
    out.append(0, kCrcBits);
    out.append(0, kMostDelay);
    BitString in;
    if (!scan(core, reg, out, in))
        return false;
    answer = Answer::None;
    const int begin = answerBegin(in);
    if (begin + bits + kCrcBits > in.size())
        return true; // no answer, or a corrupted bit
    data = {};
    ScanSum crc(addressOf(core, reg));
    for (int bit = begin; bit < begin + bits; ++bit) {
        data.append(in.at(bit));
        crc.add(in.at(bit));
    }
    answer = crc.sum() == in.number(begin + bits, kCrcBits) ? Answer::Whole : Answer::Damaged;
    return true;
}

bool AnalyzerClient::read(int core, int reg, int bits, BitString& data, int delay)
{
    Answer answer = Answer::None;
    do {
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            if ((attempt > 0 && !select(core)) || !tryRead(core, reg, bits, data, answer, delay))
                return false;
            if (answer == Answer::Whole)
                return true;
            ++m_repeats;
        }
    } while (m_link.divideScans(delay + bits + kReadBits));
    const QString name = kRegisterNames[reg];
    return fail(core,
        answer == Answer::None ? "it does not answer about its " + name
                               : "its " + name + " is corrupted at every read");
}

bool AnalyzerClient::write(int core, int reg, const BitString& data)
{
    BitString out = dataScan();
    out.append(data);
    ScanSum crc(addressOf(core, reg));
    crc.add(false); // the 0 that begins the scan's data
    for (int bit = 0; bit < data.size(); ++bit)
        crc.add(data.at(bit));
    for (int attempt = 0; attempt < kWriteAttempts; ++attempt) {
        BitString in;
        if ((attempt > 0 && !select(core)) || !scan(core, reg, out, in))
            return false;
        BitString check = dataScan();
        check.append(true);
        check.append(0, kCrcBits);
        check.append(0, kMostDelay);
        if (!scan(core, Check, check, in))
            return false;
        const int begin = answerBegin(in);
        if (begin + kCrcBits <= in.size() && in.number(begin, kCrcBits) == crc.sum())
            return true;
    }
    return fail(core, QString("it does not accept its ") + kRegisterNames[reg]);
}

// Whether there is a core: one missing answer may be a corrupted bit, so two are required.
bool AnalyzerClient::probe(int core, bool& present)
{
    int silences = 0;
    for (int attempt = 0; attempt < kAttempts && silences < 2; ++attempt) {
        BitString bits;
        Answer answer = Answer::None;
        if ((attempt > 0 && !select(core))
            || !tryRead(core, Identity, kIdentityHeadBits, bits, answer))
            return false;
        present = answer == Answer::Whole;
        if (present)
            return true;
        silences += answer == Answer::None ? 1 : 0;
    }
    return silences > 0 || fail(core, "its identity is corrupted at every read");
}

bool AnalyzerClient::readIdentity(int core, CoreIdentity& identity)
{
    BitString bits;
    QString error;
    return read(core, Identity, kIdentityHeadBits, bits)
        && read(core, Identity, identityBits(bits), bits)
        && (parseIdentity(bits, core, identity, &error) || fail(core, error));
}

bool AnalyzerClient::discover(std::vector<CoreIdentity>& cores)
{
    cores.clear();
    for (int core = 0; core < OXA::kMostCores; ++core) {
        bool present = false;
        CoreIdentity identity;
        if (!probe(core, present) || (present && !readIdentity(core, identity)))
            return false;
        if (present)
            cores.push_back(identity);
    }
    if (cores.empty())
        m_error = "there is no analyzer core in the target";
    return !cores.empty();
}

bool AnalyzerClient::readFingerprint(int core, quint32& fingerprint)
{
    BitString bits;
    if (!read(core, Fingerprint, 32, bits))
        return false;
    fingerprint = quint32(bits.number(0, 32));
    return true;
}

bool AnalyzerClient::readNameSums(const CoreIdentity& core, QList<quint32>& sums)
{
    constexpr int kSumBits = 32;
    const int count = 2 + int(core.ports.size()); // of the clock, the data and the ports
    BitString bits;
    if (!read(core.position, Names, count * kSumBits, bits))
        return false;
    sums.clear();
    for (int i = 0; i < count; ++i)
        sums += quint32(bits.number(i * kSumBits, kSumBits));
    if (sums.count(0) == count)
        sums.clear();
    return true;
}

bool AnalyzerClient::readStatus(const CoreIdentity& core, CoreStatus& status, int delay)
{
    BitString bits;
    if (!read(core.position, Status, statusBits(core), bits, delay))
        return false;
    status = parseStatus(bits, core);
    return true;
}

bool AnalyzerClient::command(int core, CoreCommand command)
{
    return write(core, Command, BitString(quint64(command), kCommandBits));
}

bool AnalyzerClient::readWords(
    const CoreIdentity& core, int reg, qint64 words, int wordBits, BitString& data)
{
    constexpr qint64 kMostBits = 1 << 28; // three characters for each bit have to fit an array
    if (words > core.depth || words * wordBits > kMostBits)
        return fail(core.position, QString("it reports %1 samples in its memory").arg(words));
    return read(core.position, reg, int(words) * wordBits, data);
}

bool AnalyzerClient::readMemory(const CoreIdentity& core, qint64 words, BitString& memory)
{
    return readWords(core, Memory, words, core.wordBits(), memory);
}

bool AnalyzerClient::readSamples(const CoreIdentity& core, qint64 words, BitString& samples)
{
    return readWords(core, Samples, words, core.unmarkedBits(), samples);
}

bool AnalyzerClient::readWindows(const CoreIdentity& core, qint64 windows, BitString& words)
{
    return read(core.position, Windows, int(windows) * core.windowBits(), words);
}

bool AnalyzerClient::writeSettings(const CoreIdentity& core, const TriggerSetup& setup)
{
    BitString bits;
    QString error;
    return settingsBits(core, setup, bits, &error) ? write(core.position, Settings, bits)
                                                   : fail(core.position, error);
}

bool AnalyzerClient::writeTables(const CoreIdentity& core, const TriggerSetup& setup)
{
    BitString bits;
    QString error;
    return tableBits(core, setup, bits, &error) ? write(core.position, Tables, bits)
                                                : fail(core.position, error);
}

}
