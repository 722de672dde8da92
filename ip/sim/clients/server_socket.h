// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_CLIENTS_SERVER_SOCKET_H
#define IP_SIM_CLIENTS_SERVER_SOCKET_H

#include <string>

namespace oxa_target {

/// A listening socket that serves one client at a time. Other clients are refused until it
/// disconnects.
class ServerSocket {
public:
    ServerSocket() = default;
    ~ServerSocket();
    ServerSocket(const ServerSocket&) = delete;
    ServerSocket& operator=(const ServerSocket&) = delete;

    /// Listens at "unix:PATH", or at "tcp:PORT" of the loopback address, where port 0 is any free
    /// port. False, with the reason in `error`, on failure.
    bool listen(const std::string& address, std::string& error);

    bool isListening() const { return m_listener >= 0; }
    int port() const; ///< of a TCP socket; 0 for others
    bool hasClient() const { return m_client >= 0; }

    /// Receives and sends what is pending. False when a client disconnected. While a client does
    /// not receive its answers, nothing more is read from it.
    bool receive();

    /// Received bytes that are not processed; the caller erases what it has processed.
    std::string input;

    /// Returns at once; bytes that cannot be sent yet are buffered.
    void send(const std::string& bytes);
    void dropClient();

    int listenerHandle() const { return m_listener; }
    int clientHandle() const { return m_client; }
    /// The events to wait for at the client's handle before the next `receive`.
    short clientEvents() const;

private:
    bool receiveFromClient();
    void sendWaiting();

    int m_listener = -1;
    int m_client = -1;
    std::string m_path;
    std::string m_waiting; // to be sent
};

}

#endif
