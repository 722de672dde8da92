// SPDX-License-Identifier: Apache-2.0
// Cores that follow the protocol, with any contents in all registers: found, read out and decoded,
// or refused with a reason.
#include "fuzz_support.h"

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/scan_sum.h"
#include "oxacapture/target/window_decoder.h"

#include <QtEndian>

using namespace OXA_CAPTURE;

namespace {

constexpr int kSetupBytes = 6;
constexpr int kRegisterBytes = 24; // from one register's contents to the next one's, in the input
constexpr quint32 kMagic = 0x3141584f;
constexpr quint64 kVersion = 5; // of the protocol
constexpr int kAskedBehind = 1 + 32 + 24; // the end, the sum and what a client shifts beyond
constexpr int kLongestScan = 1 << 13;

class AnyTarget : public JtagLink {
public:
    explicit AnyTarget(const QByteArray& bytes)
        : m_bytes(bytes)
    {
    }

    bool reset() override { return true; }
    bool scanIr(const BitString&) override { return true; }
    bool scanDr(const BitString& out, BitString* in) override
    {
        if (out.at(1))
            m_address = int(out.number(2, 8));
        else if (in)
            *in = answer(out.size() - 2 - kAskedBehind);
        return true;
    }

private:
    bool bit(int i) const
    {
        const int reg = m_address & 15;
        if (reg == 0 && i < 40) // what makes it an analyzer core of this protocol
            return (quint64(kMagic) | kVersion << 32) >> i & 1;
        return m_bytes.at((reg * kRegisterBytes + i / 8) % m_bytes.size()) >> (i % 8) & 1;
    }

    BitString answer(int bits) const
    {
        const bool isThere = m_address >> 4 == 0;
        BitString in(isThere ? 0b100 : 0, 3);
        ScanSum crc(m_address);
        for (int i = 0; i < bits; ++i) {
            in.append(isThere && bit(i));
            crc.add(bit(i));
        }
        in.append(isThere ? crc.sum() : 0, 32);
        in.append(0, 32);
        return in;
    }

    QByteArray m_bytes;
    int m_address = 0;
};

void readOut(AnalyzerClient& client, const CoreIdentity& core, const TriggerSetup& setup)
{
    CoreStatus status;
    if (!client.readStatus(core, status))
        return;
    const qint64 words = usedWords(core, status, setup);
    if (words <= core.depth && words * core.wordBits() > kLongestScan)
        return; // legal, and nothing but slow
    BitString windowWords;
    BitString memory;
    if (!client.readWindows(core, setup.windowNum, windowWords)
        || !(samplesSuffice(core, status, setup) ? client.readSamples(core, words, memory)
                                                 : client.readMemory(core, words, memory))) {
        require(!client.error().isEmpty(), "a failure says why");
        return;
    }
    std::vector<DecodedWindow> windows;
    QString error;
    if (!decodeWindows(core, status, setup, windowWords, memory, windows, &error)) {
        require(!error.isEmpty(), "a refusal says why");
        return;
    }
    for (const DecodedWindow& window : windows)
        require(window.triggerOffset < window.samples.size(), "the trigger is among the samples");
}

}

void fuzz(const QByteArray& input)
{
    if (input.size() < kSetupBytes + 1)
        return;
    TriggerSetup setup;
    setup.captureAmount = 1 + qFromLittleEndian<quint16>(input.data()) % 1024;
    setup.triggerPos = qFromLittleEndian<quint16>(input.data() + 2) % setup.captureAmount;
    setup.windowNum = 1 + qFromLittleEndian<quint16>(input.data() + 4) % 64;
    AnyTarget target(input.mid(kSetupBytes));
    AnalyzerClient client(target, BitString(8, 5));
    std::vector<CoreIdentity> cores;
    if (!client.begin() || !client.discover(cores)) {
        require(!client.error().isEmpty(), "a failure says why");
        return;
    }
    for (const CoreIdentity& core : cores) {
        differences(core, {});
        differences(core, cores.front());
        readOut(client, core, setup);
    }
}
