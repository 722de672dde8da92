// SPDX-License-Identifier: Apache-2.0
// What OpenOCD's Tcl server answers: the input, a piece a command, up to 0x1a each. Scans are as
// wide as asked for, or refused with a reason.
#include "fuzz_support.h"

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/openocd_link.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

using namespace OXA_CAPTURE;

namespace {

constexpr char kEnd = 0x1a;
constexpr int kSizes[] = {1, 9, 64, 300};

/// The server: it listens on a socket of this process.
class Peer {
public:
    Peer()
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, qPrintable(m_path), sizeof address.sun_path);
        unlink(address.sun_path);
        require(bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0
                && listen(m_listener, 1) == 0,
            "the server listens");
    }
    ~Peer() { unlink(qPrintable(m_path)); }

    QString address() const { return "unix:" + m_path; }

    /// Takes one connection, and answers each command with the next piece, as long as they last.
    void serve(QByteArray pieces) const
    {
        const int handle = accept(m_listener, nullptr, nullptr);
        char received[4096];
        ssize_t got = 0;
        while (!pieces.isEmpty() && (got = recv(handle, received, sizeof received, 0)) > 0) {
            if (received[got - 1] != kEnd)
                continue; // the command goes on
            const int end = pieces.indexOf(kEnd);
            const QByteArray answer = pieces.mid(0, end < 0 ? -1 : end + 1);
            send(handle, answer.constData(), size_t(answer.size()), MSG_NOSIGNAL);
            pieces.remove(0, answer.size());
        }
        close(handle);
    }

private:
    const QString m_path = QString("/dev/shm/fuzz_openocd.%1").arg(getpid());
    const int m_listener = socket(AF_UNIX, SOCK_STREAM, 0);
};

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
        BitString in;
        if (link.scanDr(onesAndZeros(size), &in))
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

void fuzz(const QByteArray& input)
{
    static const Peer peer;
    std::thread answering([&] { peer.serve(input); });
    {
        OpenOcdLink link;
        const bool connected = link.connectTo(peer.address());
        require(connected || !link.error().isEmpty(), "a refusal says why");
        const QStringList taps = connected ? link.candidates() : QStringList();
        for (const QString& tap : taps) {
            require(link.selectTap(tap), "a device that was listed");
            use(link);
        }
    }
    answering.join();
}
