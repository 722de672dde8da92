// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_CLIENTS_BITBANG_H
#define IP_SIM_CLIENTS_BITBANG_H

#include "server_socket.h"

namespace oxa_target {

/// The four pads of a test access port.
class Pads {
public:
    virtual ~Pads() = default;
    virtual void drive(bool tck, bool tms, bool tdi) = 0;
    virtual bool tdo() = 0;
};

/// OpenOCD's remote_bitbang protocol, on the target's side.
class Bitbang {
public:
    Bitbang(ServerSocket& socket, Pads& pads)
        : m_socket(socket)
        , m_pads(pads)
    {
    }

    /// Executes what has arrived, up to the first change of a pad. True when a pad was driven, and
    /// the design needs time to answer. False when nothing is left to do.
    bool step();

private:
    void sendAnswers();
    void flush();

    ServerSocket& m_socket;
    Pads& m_pads;
    size_t m_done = 0; ///< of the socket's input
    std::string m_answers;
};

}

#endif
