// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_CAPTURE_SERIAL_BRIDGE_H
#define BENCH_CAPTURE_SERIAL_BRIDGE_H

#include "support/serial_proxy.h"

#include <QTcpSocket>

/// The UART link of docs/uart-protocol.md in front of the JTAG pads of a simulated target: as
/// oxa_uart_bridge does it, but at once. A character at another rate is a framing error.
class SerialBridge {
public:
    ~SerialBridge()
    {
        m_over = true;
        if (m_thread.joinable())
            m_thread.join();
        close(m_master);
        close(m_slave);
    }

    /// Connects to the pads at `port`; returns the device for clients.
    QString start(quint16 port)
    {
        const QString device = openTerminal(m_master, m_slave);
        m_thread = std::thread([this, port] { run(port); });
        return device;
    }

private:
    enum Part { Hunt, Head, Counts, Zeros, Literals, CheckLow, CheckHigh };
    static constexpr int kBaud = 115200;
    static constexpr int kMostStep = 1; // as the clock of `oxa target` has it

    void run(quint16 port)
    {
        QTcpSocket pads;
        pads.connectToHost("127.0.0.1", port);
        pads.waitForConnected();
        pads.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        m_pads = &pads;
        clock("11111"
              "0"
              "1100"
              "00001"
              "10",
            "00000"
            "0"
            "0000"
            "00010"
            "00"); // ER1
        while (!m_over) {
            pollfd handle = {m_master, POLLIN, 0};
            char in[256];
            if (poll(&handle, 1, 20) <= 0)
                continue;
            const ssize_t size = read(m_master, in, sizeof in);
            m_answer.clear();
            for (ssize_t i = 0; i < size; ++i)
                take(in[i]);
            if (write(m_master, m_answer.constData(), size_t(m_answer.size())) < 0)
                return;
        }
    }

    // Clocks the pads with these levels of TMS and TDI; the levels of TDO before each rising edge.
    QByteArray clock(const QByteArray& tms, const QByteArray& tdi)
    {
        QByteArray commands;
        for (int i = 0; i < tms.size(); ++i) {
            const char levels = char('0' + 2 * (tms[i] - '0') + tdi[i] - '0');
            (((commands += levels) += 'R') += char(levels + 4));
        }
        m_pads->write(commands);
        QByteArray tdo;
        while (
            tdo.size() < tms.size() && (m_pads->bytesAvailable() > 0 || m_pads->waitForReadyRead()))
            tdo += m_pads->readAll();
        return tdo.leftJustified(tms.size(), '0');
    }

    // Between two calls, a scan is in Pause-DR.
    QByteArray shift(const QByteArray& bytes)
    {
        QByteArray bits;
        for (const char byte : bytes) {
            for (int bit = 0; bit < 8; ++bit)
                bits += byte >> bit & 1 ? '1' : '0';
        }
        QByteArray back;
        if (!m_scanning) { // the first bit captures
            clock("1010", "0000");
            bits.remove(0, 1);
            back = "0";
            m_scanning = true;
        }
        back += clock("10" + QByteArray(bits.size() - 1, '0') + "10", "00" + bits + '0')
                    .mid(2, bits.size());
        QByteArray result(bytes.size(), '\0');
        for (int i = 0; i < back.size(); ++i)
            result[i / 8] = char(result[i / 8] | (back[i] - '0') << i % 8);
        return result;
    }

    void add(quint16& crc, char byte)
    {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = quint16(crc >> 1 ^ (crc & 1 ? 0x8408 : 0));
    }

    void send(const QByteArray& bytes)
    {
        for (const char byte : bytes)
            add(m_sent, byte);
        m_answer += bytes;
    }

    void take(char byte)
    {
        termios2 settings = {};
        ioctl(m_master, TCGETS2, &settings);
        if (int(settings.c_ospeed) != kBaud << m_step) {
            m_step = 0;
            m_part = Hunt;
            return;
        }
        add(m_received, byte);
        switch (m_part) {
        case Hunt:
            m_part = byte == '\xa7' ? Head : Hunt;
            m_received = 0xffff;
            break;
        case Head:
            m_flags = byte;
            m_sent = 0xffff;
            send({1, byte});
            m_part = Counts;
            break;
        case Counts:
            m_literals = quint8(byte) >> 4;
            m_zeros = (byte & 15) << 8;
            m_part = Zeros;
            break;
        case Zeros:
            m_zeros |= quint8(byte);
            m_part = m_literals > 0 ? Literals : CheckLow;
            break;
        case Literals: {
            const QByteArray back = shift({1, byte});
            if (!(m_flags & 0x40))
                send(back);
            m_part = --m_literals > 0 ? Literals : CheckLow;
            break;
        }
        case CheckLow:
            m_part = CheckHigh;
            break;
        case CheckHigh:
            m_part = Hunt;
            if (m_received == 0)
                finish();
        }
    }

    void finish()
    {
        const bool setsRate = m_flags & 0x20;
        const QByteArray back
            = setsRate || m_zeros == 0 ? QByteArray() : shift(QByteArray(m_zeros, '\0'));
        if (!(m_flags & 0x40))
            send(back);
        const quint16 sum = m_sent;
        (m_answer += char(sum & 0xff)) += char(sum >> 8);
        if (m_flags & 0x80 && m_scanning) {
            clock("110", "000");
            m_scanning = false;
        }
        if (setsRate && (m_zeros & 7) <= kMostStep)
            m_step = m_zeros & 7;
    }

    int m_master = -1, m_slave = -1;
    QTcpSocket* m_pads = nullptr;
    QByteArray m_answer;
    Part m_part = Hunt;
    int m_flags = 0, m_literals = 0, m_zeros = 0, m_step = 0;
    quint16 m_received = 0, m_sent = 0;
    bool m_scanning = false;
    std::atomic<bool> m_over {false};
    std::thread m_thread;
};

#endif
