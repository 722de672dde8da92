#ifndef IP_SIM_VPI_SERVER_SOCKET_H
#define IP_SIM_VPI_SERVER_SOCKET_H

#include <string>

namespace oxa_target {

/// A listening socket that serves one client at a time. Others are turned away, and after a client
/// has gone the next may come.
class ServerSocket {
public:
    ServerSocket() = default;
    ~ServerSocket();
    ServerSocket(const ServerSocket&) = delete;
    ServerSocket& operator=(const ServerSocket&) = delete;

    /// Listens at "unix:PATH", or at "tcp:PORT" of the loopback address, where port 0 means any.
    /// False with the reason in `error` when that fails.
    bool listen(const std::string& address, std::string& error);

    bool isListening() const { return m_listener >= 0; }
    int port() const; ///< of a TCP socket; 0 for others
    bool hasClient() const { return m_client >= 0; }

    /// Takes what has arrived, and sends what waits. False when a client left. As long as a client
    /// does not take its answers, nothing more is taken of it.
    bool receive();

    /// What has arrived and was not taken; the caller erases what it takes.
    std::string input;

    /// Returns at once; what the client does not take yet waits.
    void send(const std::string& bytes);
    void dropClient();

    int listenerHandle() const { return m_listener; }
    int clientHandle() const { return m_client; }
    /// What to wait for at the client's handle before the next `receive`.
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
