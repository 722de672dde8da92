// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_CAPTURE_INSTANT_TARGET_H
#define BENCH_CAPTURE_INSTANT_TARGET_H

#include "support/tap.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <atomic>
#include <memory>
#include <thread>

/// The test access port of the simulated target, with nothing but IDCODE and BYPASS.
class InstantTap {
public:
    bool tdo() const { return (m_state == ShiftIr ? m_ir : m_dr) & 1; }

    void rise(bool tms, bool tdi)
    {
        if (m_state == TapReset || m_state == UpdateIr)
            m_isIdcode = m_state == TapReset || m_ir == 1;
        if (m_state == CaptureDr)
            m_dr = m_isIdcode ? 0x10a0affd : 0;
        else if (m_state == ShiftDr)
            m_dr = m_dr >> 1 | unsigned(tdi) << (m_isIdcode ? 31 : 0);
        else if (m_state == CaptureIr)
            m_ir = 1;
        else if (m_state == ShiftIr)
            m_ir = m_ir >> 1 | unsigned(tdi) << 4;
        m_state = nextTapState(m_state, tms);
    }

private:
    TapState m_state = TapReset;
    bool m_isIdcode = true;
    unsigned m_ir = 1;
    unsigned m_dr = 0;
};

/// A remote_bitbang server that takes no time for its answers: what is measured with it is the time
/// of its client.
class InstantTarget {
public:
    ~InstantTarget()
    {
        m_over = true;
        if (m_thread.joinable())
            m_thread.join();
    }

    /// Serves one client; the port.
    QByteArray start()
    {
        m_thread = std::thread([this] { serve(); });
        while (m_port == 0)
            std::this_thread::yield();
        return QByteArray::number(m_port);
    }

private:
    void serve()
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        m_port = server.serverPort();
        while (!m_over && !server.waitForNewConnection(50)) { }
        const std::unique_ptr<QTcpSocket> client(server.nextPendingConnection());
        if (client)
            client->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        while (!m_over && client && client->state() == QTcpSocket::ConnectedState) {
            if (client->bytesAvailable() == 0 && !client->waitForReadyRead(50))
                continue;
            client->write(answers(client->readAll()));
            client->waitForBytesWritten();
        }
    }

    QByteArray answers(const QByteArray& commands)
    {
        QByteArray bits;
        for (const char command : commands) {
            if (command == 'R')
                bits += m_tap.tdo() ? '1' : '0';
            if (command < '0' || command > '7')
                continue;
            if (command & 4 && !(m_pads & 4))
                m_tap.rise(command & 2, command & 1);
            m_pads = command;
        }
        return bits;
    }

    std::thread m_thread;
    std::atomic<int> m_port {0};
    std::atomic<bool> m_over {false};
    InstantTap m_tap;
    char m_pads = '0';
};

#endif
