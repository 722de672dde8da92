// Pads driven for a peer that answers what it likes, more than it was asked, or no longer.
#include "peer.h"

#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/remote_bitbang_link.h"

#include <thread>

namespace {

constexpr uint8_t kLiteral = 0xff; // the next byte goes out as it is, asked for or not

/// Answers each 'R' with a bit of the input as long as it lasts.
class Answers {
public:
    Answers(const uint8_t* data, size_t size)
        : m_data(data)
        , m_size(size)
    {
    }

    bool last() const { return m_at < m_size; }

    QByteArray to(const QByteArray& pads)
    {
        QByteArray answers;
        for (int i = 0; i < pads.size() && last(); ++i) {
            if (m_data[m_at] == kLiteral && m_at + 1 < m_size) {
                answers += char(m_data[m_at + 1]);
                m_at += 2;
            } else if (pads.at(i) == 'R') {
                answers += char('0' + (m_data[m_at] >> m_bit & 1));
                m_at += ++m_bit % 8 == 0 ? 1 : 0;
                m_bit %= 8;
            }
        }
        return answers;
    }

private:
    const uint8_t* m_data;
    size_t m_size;
    size_t m_at = 0;
    int m_bit = 0;
};

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Peer peer("fuzz_bitbang");
    std::thread answering([&] {
        Answers answers(data, size);
        peer.serve([&] { return answers.last(); },
            [&](const QByteArray& pads) { return answers.to(pads); });
    });
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
