// Pads driven for a peer that answers what it likes, more than it was asked, or no longer.
#include "fuzz_support.h"

#include "capture/analyzer_client.h"
#include "capture/remote_bitbang_link.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

namespace {

constexpr uint8_t kLiteral = 0xff; // the next byte goes out as it is, asked for or not

// Listens on a socket of this process.
class Peer {
public:
    Peer()
        : m_path(QString("/dev/shm/fuzz_bitbang.%1").arg(getpid()))
        , m_listener(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, qPrintable(m_path), sizeof address.sun_path);
        unlink(address.sun_path);
        require(bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0
                && listen(m_listener, 1) == 0,
            "the peer listens");
    }

    QString address() const { return "unix:" + m_path; }

    /// Takes one connection, and answers each 'R' with a bit of the input as long as it lasts.
    void answer(const uint8_t* data, size_t size) const
    {
        const int handle = accept(m_listener, nullptr, nullptr);
        size_t at = 0;
        int bit = 0;
        char pads[4096];
        ssize_t got = 0;
        while (at < size && (got = recv(handle, pads, sizeof pads, 0)) > 0) {
            QByteArray answers;
            for (ssize_t i = 0; i < got && at < size; ++i) {
                if (data[at] == kLiteral && at + 1 < size) {
                    answers += char(data[at + 1]);
                    at += 2;
                } else if (pads[i] == 'R') {
                    answers += char('0' + (data[at] >> bit & 1));
                    at += ++bit % 8 == 0 ? 1 : 0;
                    bit %= 8;
                }
            }
            send(handle, answers.constData(), size_t(answers.size()), MSG_NOSIGNAL);
        }
        close(handle);
    }

private:
    QString m_path;
    int m_listener;
};

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Peer peer;
    std::thread answering([&] { peer.answer(data, size); });
    {
        OXA_CAPTURE::RemoteBitbangLink link;
        require(link.connectTo(peer.address()), "somebody listens");
        OXA_CAPTURE::AnalyzerClient client(link, OXA_CAPTURE::BitString(8, 5));
        std::vector<OXA_CAPTURE::CoreIdentity> cores;
        if (client.begin() && !client.discover(cores))
            require(!client.error().isEmpty(), "a failure says why");
        OXA_CAPTURE::BitString in;
        if (link.scanDr(OXA_CAPTURE::BitString(0, 24), &in))
            require(in.size() >= 24, "a bit for each that was asked for");
        else
            require(!link.error().isEmpty(), "a failure says why");
    }
    answering.join();
    return 0;
}
