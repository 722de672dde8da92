// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_JTAG_PROXY_H
#define TESTS_SUPPORT_JTAG_PROXY_H

#include "support/patience.h"
#include "support/tap.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <atomic>
#include <functional>
#include <random>
#include <thread>

/// A device with nothing but BYPASS behind an instruction register of four bits.
class BypassTap {
public:
    bool tdo() const { return m_state == ShiftDr ? m_dr : m_state == ShiftIr && m_ir & 1; }

    void rise(bool tms, bool tdi)
    {
        if (m_state == CaptureDr)
            m_dr = false;
        else if (m_state == ShiftDr)
            m_dr = tdi;
        else if (m_state == CaptureIr)
            m_ir = 1;
        else if (m_state == ShiftIr)
            m_ir = m_ir >> 1 | int(tdi) << 3;
        m_state = nextTapState(m_state, tms);
    }

private:
    TapState m_state = TapReset;
    int m_ir = 0;
    bool m_dr = false;
};

/// Forwards between a remote_bitbang client and its target: adds devices in front of it, and flips
/// bits on the wires.
class JtagProxy {
public:
    int before = 0; ///< devices between TDI and the target
    int flips = 0; ///< a wire is flipped once in so many cycles, by chance; 0: never
    bool flipsControl = false; ///< TMS and TCK, too
    std::function<QByteArray(const QByteArray&)> rewrite; ///< of a client's commands, if set

    ~JtagProxy()
    {
        m_over = true;
        if (m_thread.joinable())
            m_thread.join();
    }

    /// Serves clients of the target at `port`, one after the other; the port of its own.
    QByteArray start(const QByteArray& port)
    {
        std::atomic<int> own {0};
        m_thread = std::thread([this, port, &own] { serve(port.toUShort(), own); });
        while (own == 0)
            std::this_thread::yield();
        return QByteArray::number(own);
    }

private:
    void serve(quint16 port, std::atomic<int>& own)
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        own = server.serverPort();
        while (!m_over) {
            if (!server.waitForNewConnection(50))
                continue;
            const std::unique_ptr<QTcpSocket> client(server.nextPendingConnection());
            QTcpSocket target;
            target.connectToHost(QHostAddress::LocalHost, port);
            target.waitForConnected(kPatience);
            target.setSocketOption(QAbstractSocket::LowDelayOption, 1);
            while (!m_over && client->state() == QTcpSocket::ConnectedState) {
                if (client->bytesAvailable() == 0 && !client->waitForReadyRead(50))
                    continue;
                const QByteArray commands = client->readAll();
                client->write(pass(rewrite ? rewrite(commands) : commands, target));
                client->waitForBytesWritten();
            }
        }
    }

    bool flipped() { return flips > 0 && m_random() % unsigned(flips) == 0; }

    // The target's answers to `commands` that went through the devices in front.
    QByteArray pass(QByteArray commands, QTcpSocket& target)
    {
        m_devices.resize(size_t(before));
        for (char& command : commands) {
            if (command < '0' || command > '7')
                continue;
            if (flipped())
                command ^= char(flipsControl ? 1 << m_random() % 3 : 1);
            const bool rises = command & 4 && !(m_tck & 4);
            bool tdi = command & 1;
            for (BypassTap& device : m_devices) {
                const bool next = device.tdo();
                if (rises)
                    device.rise(command & 2, tdi);
                tdi = next;
            }
            m_tck = command;
            command = char((command & ~1) | int(tdi));
        }
        target.write(commands);
        target.flush();
        QByteArray answers = target.readAll();
        while (answers.size() < commands.count('R') && target.waitForReadyRead(kPatience))
            answers += target.readAll();
        for (char& answer : answers)
            answer ^= char(flipped());
        return answers;
    }

    std::thread m_thread;
    std::atomic<bool> m_over {false};
    std::minstd_rand m_random {1};
    std::vector<BypassTap> m_devices;
    char m_tck = '0';
};

#endif
