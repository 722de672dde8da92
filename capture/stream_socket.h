#ifndef CAPTURE_STREAM_SOCKET_H
#define CAPTURE_STREAM_SOCKET_H

#include "capture/capture_export.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace OXA_CAPTURE {

/// A connection to a program that answers what it is sent.
class OXACAPTURE_EXPORT StreamSocket {
public:
    StreamSocket() = default;
    ~StreamSocket();
    StreamSocket(const StreamSocket&) = delete;
    StreamSocket& operator=(const StreamSocket&) = delete;

    /// Connects to "unix:PATH" or to "HOST:PORT"; false when nobody listens there, or answers
    /// within some seconds.
    bool connectTo(const QString& address);

    /// Asked whenever nothing came for the timeout of an exchange, `looks` times in a row, whether
    /// to wait on. Nobody waits on without it.
    using Patience = std::function<bool(int looks)>;
    void setPatience(const Patience& patience) { m_patience = patience; }

    /// Sends `bytes`, and receives until `isWhole` says that the answer is. False when the other
    /// side left, or did nothing for `timeout` ms; the connection then ends, so that an answer that
    /// comes late is not taken for the next one.
    bool exchange(const QByteArray& bytes, const std::function<bool(const QByteArray&)>& isWhole,
        QByteArray& answer, int timeout);

    bool isConnected() const { return m_handle >= 0; }
    void disconnect();

    /// Why the last call failed.
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);
    bool failUnlessLater();
    bool sendSome(const QByteArray& bytes, int& sent);
    bool receiveSome(QByteArray& answer);

    int m_handle = -1;
    Patience m_patience;
    QString m_error = "not connected";
};

}

#endif
