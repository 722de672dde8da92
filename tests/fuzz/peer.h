#ifndef TESTS_FUZZ_PEER_H
#define TESTS_FUZZ_PEER_H

#include "fuzz_support.h"

#include <functional>
#include <sys/socket.h>
#include <sys/un.h>

/// The other side of a connection: it listens on a socket of this process.
class Peer {
public:
    explicit Peer(const char* name)
        : m_path(QString("/dev/shm/%1.%2").arg(name, QString::number(getpid())))
        , m_listener(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, qPrintable(m_path), sizeof address.sun_path);
        unlink(address.sun_path);
        require(bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0
                && listen(m_listener, 1) == 0,
            "the peer listens");
    }
    ~Peer()
    {
        close(m_listener);
        unlink(qPrintable(m_path));
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    QString address() const { return "unix:" + m_path; }

    /// Takes one connection, and sends what `answer` makes of each piece that it receives, until
    /// `goesOn` says no.
    void serve(const std::function<bool()>& goesOn,
        const std::function<QByteArray(const QByteArray& piece)>& answer) const
    {
        const int handle = accept(m_listener, nullptr, nullptr);
        char piece[4096];
        ssize_t got = 0;
        while (goesOn() && (got = recv(handle, piece, sizeof piece, 0)) > 0) {
            const QByteArray answers = answer(QByteArray(piece, int(got)));
            send(handle, answers.constData(), size_t(answers.size()), MSG_NOSIGNAL);
        }
        close(handle);
    }

private:
    QString m_path;
    int m_listener;
};

#endif
