#include "capture/stream_socket.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <netdb.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace OXA_CAPTURE {

namespace {

constexpr int kReadSize = 65536; // bytes
constexpr char kClosed[] = "the other side closed the connection";
constexpr int kConnectTimeout = 5000; // ms

int connectToPath(const QByteArray& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (size_t(path.size()) >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return -1;
    }
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0 || connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
        return handle;
    const int reason = errno;
    close(handle);
    errno = reason;
    return -1;
}

// Whether the connection that `handle` is making comes about; false with the reason in errno.
bool isConnected(int handle)
{
    pollfd polled = {handle, POLLOUT, 0};
    int ready = 0;
    do {
        ready = poll(&polled, 1, kConnectTimeout);
    } while (ready < 0 && errno == EINTR);
    int reason = ETIMEDOUT;
    socklen_t size = sizeof reason;
    if (ready > 0 && getsockopt(handle, SOL_SOCKET, SO_ERROR, &reason, &size) == 0 && reason == 0)
        return true;
    errno = reason;
    return false;
}

int connectToAddress(const addrinfo& at)
{
    const int handle
        = socket(at.ai_family, at.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, at.ai_protocol);
    if (handle < 0)
        return -1;
    if (connect(handle, at.ai_addr, at.ai_addrlen) == 0
        || (errno == EINPROGRESS && isConnected(handle)))
        return handle;
    const int reason = errno;
    close(handle);
    errno = reason;
    return -1;
}

int connectToHost(const QByteArray& host, const QByteArray& port, QString& error)
{
    // The resolver takes 65537 for 1.
    if (port.toUShort() == 0) {
        error = "its port is no number from 1 to 65535";
        return -1;
    }
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int result = getaddrinfo(host.constData(), port.constData(), &hints, &found);
    if (result != 0) {
        error = gai_strerror(result);
        return -1;
    }
    int handle = -1;
    for (const addrinfo* at = found; at && handle < 0; at = at->ai_next) {
        handle = connectToAddress(*at);
        error = handle < 0 ? std::strerror(errno) : "";
    }
    freeaddrinfo(found);
    const int on = 1;
    if (handle >= 0)
        setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return handle;
}

}

StreamSocket::~StreamSocket() { disconnect(); }

void StreamSocket::disconnect()
{
    if (m_handle >= 0)
        close(m_handle);
    m_handle = -1;
}

bool StreamSocket::fail(const QString& error)
{
    disconnect();
    m_error = error;
    return false;
}

bool StreamSocket::connectTo(const QString& address)
{
    disconnect();
    QString reason;
    if (address.startsWith("unix:")) {
        m_handle = connectToPath(QFile::encodeName(address.mid(5)));
        reason = m_handle < 0 ? std::strerror(errno) : "";
    } else {
        m_handle = connectToHost(
            address.section(':', 0, -2).toUtf8(), address.section(':', -1).toUtf8(), reason);
    }
    return m_handle >= 0 || fail(QString("cannot connect to %1: %2").arg(address, reason));
}

bool StreamSocket::exchange(const QByteArray& bytes,
    const std::function<bool(const QByteArray&)>& isWhole, QByteArray& answer, int timeout)
{
    answer.clear();
    if (m_handle < 0) // m_error says since when
        return false;
    // Answers are taken while sending goes on: neither side's buffer holds all of a long scan.
    int sent = 0;
    int looks = 0; // in vain
    while (sent < bytes.size() || !isWhole(answer)) {
        pollfd polled = {m_handle, short(POLLIN | (sent < bytes.size() ? POLLOUT : 0)), 0};
        const int ready = poll(&polled, 1, timeout);
        looks = ready == 0 ? looks + 1 : 0;
        if (ready == 0 && m_patience && m_patience(looks))
            continue;
        if (ready == 0)
            return fail(QString("no answer within %1 s").arg(looks * (timeout / 1000.0)));
        if (ready < 0 && errno != EINTR)
            return fail(std::strerror(errno));
        if (ready > 0 && polled.revents & POLLOUT && !sendSome(bytes, sent))
            return false;
        if (ready > 0 && polled.revents & ~POLLOUT && !receiveSome(answer))
            return false;
    }
    return true;
}

// After a call that did nothing: true when it is to be tried again.
bool StreamSocket::failUnlessLater()
{
    const bool closed = errno == ECONNRESET || errno == EPIPE; // with bytes that nobody read
    return errno == EAGAIN || errno == EINTR || fail(closed ? kClosed : std::strerror(errno));
}

bool StreamSocket::sendSome(const QByteArray& bytes, int& sent)
{
    const ssize_t now = send(m_handle, bytes.constData() + sent, size_t(bytes.size() - sent),
        MSG_NOSIGNAL | MSG_DONTWAIT);
    if (now > 0)
        sent += int(now);
    return now >= 0 || failUnlessLater();
}

bool StreamSocket::receiveSome(QByteArray& answer)
{
    char bytes[kReadSize];
    const ssize_t got = recv(m_handle, bytes, sizeof bytes, MSG_DONTWAIT);
    if (got > 0)
        answer.append(bytes, int(got));
    if (got == 0)
        return fail(kClosed);
    return got > 0 || failUnlessLater();
}

}
