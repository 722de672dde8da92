// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_REMOTE_BITBANG_LINK_H
#define OXACAPTURE_TARGET_REMOTE_BITBANG_LINK_H

#include "oxacapture/target/jtag_link.h"
#include "oxacapture/target/stream_socket.h"

namespace OXA_CAPTURE {

/// The pads of one device, driven in OpenOCD's remote_bitbang protocol.
class OXACAPTURE_EXPORT RemoteBitbangLink : public JtagLink {
public:
    /// Called during a wait for the device, as by a `StreamSocket`.
    void setGoesOn(const std::function<bool()>& goesOn) { m_socket.setGoesOn(goesOn); }

    /// Connects to "unix:PATH" or "HOST:PORT".
    bool connectTo(const QString& address);

    /// Without one, the link fails when the target does not answer for some seconds.
    void setPatience(const StreamSocket::Patience& patience) { m_socket.setPatience(patience); }

    bool reset() override;
    bool scanIr(const BitString& out) override;
    bool scanDr(const BitString& out, BitString* in) override;

private:
    bool scan(const char* entry, const BitString& out, BitString* in);
    bool exchange(const QByteArray& pads, int bits, BitString* in);

    StreamSocket m_socket;
};

}

#endif
