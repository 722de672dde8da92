// SPDX-License-Identifier: Apache-2.0
#include "server_socket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace oxa_target {

namespace {

constexpr size_t kReadSize = 65536;
constexpr int kBacklog = 4;

template <typename Address> int listenOn(int handle, const Address& address)
{
    if (handle >= 0
        && bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0
        && listen(handle, kBacklog) == 0)
        return handle;
    if (handle >= 0)
        close(handle);
    return -1;
}

int listenAtPath(const std::string& path)
{
    sockaddr_un address = {};
    if (path.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return -1;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    return listenOn(handle, address);
}

int listenAtPort(const std::string& port)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(uint16_t(std::atoi(port.c_str())));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    return listenOn(handle, address);
}

}

ServerSocket::~ServerSocket()
{
    dropClient();
    if (m_listener >= 0)
        close(m_listener);
    if (!m_path.empty())
        unlink(m_path.c_str());
}

bool ServerSocket::listen(const std::string& address, std::string& error)
{
    if (address.rfind("unix:", 0) == 0)
        m_listener = listenAtPath(address.substr(5));
    else if (address.rfind("tcp:", 0) == 0)
        m_listener = listenAtPort(address.substr(4));
    else
        errno = EINVAL;
    if (m_listener < 0) {
        error = "cannot listen at " + address + ": " + std::strerror(errno);
        return false;
    }
    if (address[0] == 'u')
        m_path = address.substr(5);
    return true;
}

int ServerSocket::port() const
{
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    if (getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size) != 0
        || address.sin_family != AF_INET)
        return 0;
    return ntohs(address.sin_port);
}

bool ServerSocket::receive()
{
    const bool stays = m_client < 0 || receiveFromClient();
    // A client that connects while another one leaves is accepted.
    for (int handle; (handle = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        if (m_client >= 0) {
            close(handle);
            continue;
        }
        m_client = handle;
        const int on = 1;
        setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
    return stays;
}

bool ServerSocket::receiveFromClient()
{
    sendWaiting();
    if (!m_waiting.empty())
        return true;
    char bytes[kReadSize];
    const ssize_t got = recv(m_client, bytes, sizeof bytes, MSG_DONTWAIT);
    if (got > 0) {
        input.append(bytes, size_t(got));
        return true;
    }
    if (got < 0 && (errno == EAGAIN || errno == EINTR))
        return true;
    dropClient();
    return false;
}

void ServerSocket::send(const std::string& bytes)
{
    m_waiting += bytes;
    sendWaiting();
}

void ServerSocket::sendWaiting()
{
    size_t sent = 0;
    bool takes = true;
    while (m_client >= 0 && takes && sent < m_waiting.size()) {
        const ssize_t now = ::send(m_client, m_waiting.data() + sent, m_waiting.size() - sent,
            MSG_NOSIGNAL | MSG_DONTWAIT);
        if (now > 0)
            sent += size_t(now);
        else if (now < 0 && errno == EAGAIN)
            takes = false;
        else if (now < 0 && errno != EINTR)
            dropClient();
    }
    m_waiting.erase(0, m_client >= 0 ? sent : m_waiting.size());
}

short ServerSocket::clientEvents() const { return m_waiting.empty() ? POLLIN : POLLOUT; }

void ServerSocket::dropClient()
{
    if (m_client >= 0)
        close(m_client);
    m_client = -1;
    input.clear();
    m_waiting.clear();
}

}
