// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/stream_socket.h"

#include <QElapsedTimer>
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
constexpr char kStopped[] = "interrupted during the wait";
constexpr int kConnectTimeout = 5000; // ms
constexpr int kAskPause = 100; // ms between two calls of `goesOn`

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

}

/// Waits for a socket, and calls `goesOn` meanwhile.
class StreamSocket::Wait {
public:
    explicit Wait(const std::function<bool()>& goesOn)
        : m_goesOn(goesOn)
    {
        m_begun.start();
    }

    /// The subset of `events` that the socket is ready for, after `kAskPause` at the latest; 0 for
    /// none, negative with the reason in errno.
    int events(int handle, short events) const
    {
        pollfd polled = {handle, events, 0};
        const int ready = poll(&polled, 1, kAskPause);
        return ready > 0 ? polled.revents : ready < 0 && errno != EINTR ? -1 : 0;
    }

    bool goesOn()
    {
        if (!m_goesOn || (m_asked.isValid() && m_asked.elapsed() < kAskPause))
            return true;
        m_asked.start();
        return m_goesOn();
    }

    qint64 elapsed() const { return m_begun.elapsed(); }

private:
    const std::function<bool()>& m_goesOn;
    QElapsedTimer m_begun;
    QElapsedTimer m_asked;
};

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
    m_error.clear();
    if (address.startsWith("unix:")) {
        m_handle = connectToPath(QFile::encodeName(address.mid(5)));
        m_error = m_handle < 0 ? std::strerror(errno) : "";
    } else {
        const QString host = address.section(':', 0, -2);
        const bool enclosed = host.startsWith('[') && host.endsWith(']');
        connectToHost((enclosed ? host.mid(1, host.size() - 2) : host).toUtf8(),
            address.section(':', -1).toUtf8());
    }
    return m_handle >= 0 || fail(QString("cannot connect to %1: %2").arg(address, m_error));
}

bool StreamSocket::connectToHost(const QByteArray& host, const QByteArray& port)
{
    // The resolver reads 65537 as 1.
    if (port.toUShort() == 0)
        return fail("its port is not a number from 1 to 65535");
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int result = getaddrinfo(host.constData(), port.constData(), &hints, &found);
    if (result != 0)
        return fail(gai_strerror(result));
    bool connected = false;
    for (const addrinfo* at = found; at && !connected; at = at->ai_next)
        connected = connectToAddress(*at);
    freeaddrinfo(found);
    const int on = 1;
    if (connected)
        setsockopt(m_handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return connected;
}

bool StreamSocket::connectToAddress(const addrinfo& at)
{
    m_handle = socket(at.ai_family, at.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, at.ai_protocol);
    if (m_handle < 0 || connect(m_handle, at.ai_addr, at.ai_addrlen) == 0)
        return m_handle >= 0 || fail(std::strerror(errno));
    return errno == EINPROGRESS ? finishConnecting() : fail(std::strerror(errno));
}

bool StreamSocket::finishConnecting()
{
    Wait wait(m_goesOn);
    int events = 0;
    while (wait.goesOn() && (events = wait.events(m_handle, POLLOUT)) == 0) {
        if (wait.elapsed() >= kConnectTimeout)
            return fail(std::strerror(ETIMEDOUT));
    }
    if (events == 0)
        return fail(kStopped);
    int reason = errno; // of the poll
    socklen_t size = sizeof reason;
    if (events > 0 && getsockopt(m_handle, SOL_SOCKET, SO_ERROR, &reason, &size) != 0)
        reason = errno;
    return reason == 0 || fail(std::strerror(reason));
}

bool StreamSocket::exchange(const QByteArray& bytes,
    const std::function<bool(const QByteArray&)>& isWhole, QByteArray& answer,
    const ExchangeLimits& limits)
{
    answer.clear();
    if (m_handle < 0) // m_error has the reason
        return false;
    Wait wait(m_goesOn);
    QElapsedTimer silence;
    silence.start();
    // Receive while sending: a long scan does not fit into the buffers of both sides.
    int sent = 0;
    int looks = 0; // without result
    while (sent < bytes.size() || !isWhole(answer)) {
        if (!wait.goesOn())
            return fail(kStopped);
        const int events
            = wait.events(m_handle, short(POLLIN | (sent < bytes.size() ? POLLOUT : 0)));
        if (events < 0)
            return fail(std::strerror(errno));
        looks = events != 0 ? 0 : looks;
        if (events != 0)
            silence.restart();
        if (silence.elapsed() >= limits.silence) {
            if (!m_patience || !m_patience(++looks))
                return fail(QString("no answer within %1 s")
                                .arg((m_patience ? looks : 1) * (limits.silence / 1000.0)));
            silence.restart();
        }
        if (!m_patience && wait.elapsed() >= limits.total)
            return fail(
                QString("its answer is not complete after %1 s").arg(double(limits.total) / 1000));
        if ((events & POLLOUT && !sendSome(bytes, sent))
            || (events & ~POLLOUT && !receiveSome(answer)))
            return false;
        if (answer.size() > limits.bytes)
            return fail(QString("its answer has more than the %1 bytes allowed").arg(limits.bytes));
    }
    return true;
}

// After a call that did nothing: true when it is to be repeated.
bool StreamSocket::failUnlessLater()
{
    const bool closed = errno == ECONNRESET || errno == EPIPE; // with unread bytes
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
