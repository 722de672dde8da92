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

    /// Takes what has arrived. False when a client left.
    bool receive();

    /// What has arrived and was not taken; the caller erases what it takes.
    std::string input;

    void send(const std::string& bytes);
    void dropClient();

    int listenerHandle() const { return m_listener; }
    int clientHandle() const { return m_client; }

private:
    bool receiveFromClient();

    int m_listener = -1;
    int m_client = -1;
    std::string m_path;
};

}

#endif
