// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_TALKING_SERVER_H
#define TESTS_SUPPORT_TALKING_SERVER_H

#include <QTcpServer>
#include <QTcpSocket>

#include <atomic>
#include <memory>
#include <thread>

/// A server that takes one connection and sends the same text repeatedly.
class TalkingServer {
public:
    /// Waits `pause` ms after each text; sends it only once when that is negative.
    TalkingServer(const QByteArray& text, int pause)
        : m_thread([this, text, pause] { talk(text, pause); })
    {
        while (m_port == 0)
            std::this_thread::yield();
    }
    ~TalkingServer()
    {
        m_over = true;
        m_thread.join();
    }

    QString address() const { return QString("127.0.0.1:%1").arg(m_port); }

private:
    void talk(const QByteArray& text, int pause)
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        m_port = server.serverPort();
        while (!m_over && !server.waitForNewConnection(50)) { }
        const std::unique_ptr<QTcpSocket> client(server.nextPendingConnection());
        for (bool first = true; client && !m_over; first = false) {
            if (first || pause >= 0)
                client->write(text);
            while (!m_over && client->bytesToWrite() > 0 && client->waitForBytesWritten(50)) { }
            client->waitForReadyRead(pause > 0 ? pause : 1); // a pause, mostly
            client->readAll();
        }
    }

    std::atomic<int> m_port {0};
    std::atomic<bool> m_over {false};
    std::thread m_thread; // the last: it uses the others
};

#endif
