// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_STREAM_SOCKET_H
#define OXACAPTURE_TARGET_STREAM_SOCKET_H

#include "oxacapture/oxacapture_export.h"

#include <QByteArray>
#include <QString>

#include <functional>

struct addrinfo;

namespace OXA_CAPTURE {

/// How long an exchange may take, and how large its answer may be.
struct ExchangeLimits {
    int silence; ///< ms in which nothing is sent or received
    qint64 total; ///< ms for the whole exchange
    qint64 bytes; ///< of the answer
};

/// A connection to a program that answers requests.
class OXACAPTURE_EXPORT StreamSocket {
public:
    StreamSocket() = default;
    ~StreamSocket();
    StreamSocket(const StreamSocket&) = delete;
    StreamSocket& operator=(const StreamSocket&) = delete;

    /// Called before a wait for the other side, and ten times a second during it: when it returns
    /// false, the call fails.
    void setGoesOn(const std::function<bool()>& goesOn) { m_goesOn = goesOn; }

    /// Connects to "unix:PATH" or to "HOST:PORT", where brackets enclose an IPv6 address; false
    /// when no program accepts the connection within some seconds.
    bool connectTo(const QString& address);

    /// Called when nothing was received for the `silence` of an exchange, `looks` times in a row:
    /// returns whether to continue. It replaces the limits of time. Without it, the wait ends.
    using Patience = std::function<bool(int looks)>;
    void setPatience(const Patience& patience) { m_patience = patience; } ///< for later exchanges

    /// Sends `bytes`, and receives until `isWhole` returns true. False when the other side has
    /// disconnected or exceeded the limits; the connection is then closed, so that a late answer is
    /// not taken for the next one.
    bool exchange(const QByteArray& bytes, const std::function<bool(const QByteArray&)>& isWhole,
        QByteArray& answer, const ExchangeLimits& limits);

    bool isConnected() const { return m_handle >= 0; } ///< until a failure, or `disconnect`
    void disconnect(); ///< closes the connection, if there is one

    /// Why the last call failed.
    const QString& error() const { return m_error; }

private:
    class Wait;

    bool fail(const QString& error);
    bool failUnlessLater();
    bool connectToHost(const QByteArray& host, const QByteArray& port);
    bool connectToAddress(const addrinfo& at);
    bool finishConnecting();
    bool sendSome(const QByteArray& bytes, int& sent);
    bool receiveSome(QByteArray& answer);

    int m_handle = -1;
    Patience m_patience;
    QString m_error = QStringLiteral("not connected");
    std::function<bool()> m_goesOn;
};

}

#endif
