// What OpenOCD's Tcl server answers: the input, a piece a command, up to 0x1a each. Scans are as
// wide as asked for, or refused with a reason.
#include "peer.h"

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/openocd_link.h"

#include <thread>

using namespace OXA_CAPTURE;

namespace {

constexpr char kEnd = 0x1a;
constexpr int kSizes[] = {1, 9, 64, 300};

/// Ones in front of zeros: OpenOCD gets and answers the two as fields of their own.
BitString onesAndZeros(int size)
{
    BitString bits;
    for (int i = 0; i < size; ++i)
        bits.append(i < size / 2);
    return bits;
}

void use(OpenOcdLink& link)
{
    if (!link.reset() || !link.scanIr(link.instruction()))
        return require(!link.error().isEmpty(), "a refusal says why");
    for (const int size : kSizes) {
        const BitString out = onesAndZeros(size);
        BitString in;
        if (link.scanDr(out, &in))
            require(in.size() == size, "a bit for each that was sent");
        else
            require(!link.error().isEmpty(), "a refusal says why");
    }
    AnalyzerClient client(link, link.instruction());
    std::vector<CoreIdentity> cores;
    require((client.begin() && client.discover(cores)) || !client.error().isEmpty(),
        "a refusal says why");
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Peer peer("fuzz_openocd");
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    std::thread answering([&] {
        int at = 0;
        peer.serve([&] { return at < input.size(); },
            [&](const QByteArray& piece) {
                if (!piece.endsWith(kEnd))
                    return QByteArray(); // the command goes on
                const int end = input.indexOf(kEnd, at);
                const QByteArray answer = input.mid(at, end < 0 ? -1 : end + 1 - at);
                at += answer.size();
                return answer;
            });
    });
    {
        OpenOcdLink link;
        if (link.connectTo(peer.address())) {
            const QStringList taps = link.candidates();
            for (const QString& tap : taps) {
                require(link.selectTap(tap), "a device that was listed");
                use(link);
            }
        } else {
            require(!link.error().isEmpty(), "a refusal says why");
        }
    }
    answering.join();
    return 0;
}
