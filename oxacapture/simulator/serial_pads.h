// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_SERIAL_PADS_H
#define OXACAPTURE_SIMULATOR_SERIAL_PADS_H

#include "oxacapture/target/stream_socket.h"
#include "oxautils/generate/uart_defines.h"

#include <QByteArray>

namespace OXA_CAPTURE {

/// The serial port of a simulated analyzer with a UART link: a pseudo-terminal in front, the pads
/// of the simulation behind. The simulated clock runs only while characters are sent or expected.
class SerialPads {
public:
    /// The analyzer's port starts at this rate; the simulated clock allows twice as much.
    static constexpr int kBaud = OXA::kUsualBaud;
    static constexpr int kClockHz = 16 * kBaud;

    SerialPads() = default;
    ~SerialPads();
    SerialPads(const SerialPads&) = delete;
    SerialPads& operator=(const SerialPads&) = delete;

    /// Opens the pseudo-terminal and connects to the pads at `address`, as `RemoteBitbangLink`
    /// does.
    bool open(const QString& address);

    /// The device for clients, such as "/dev/pts/3".
    const QString& device() const { return m_device; }

    /// Passes on what the client has sent, waiting up to 20 ms for it. False when the simulation
    /// has ended.
    bool step();

    /// Why the last call failed.
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);
    bool openTerminal();
    int clientRate() const;
    bool readClient(QByteArray& bytes);
    bool run(const QByteArray& levels);
    void receive(bool level);
    bool sendClient();

    StreamSocket m_pads;
    QString m_device;
    QString m_error;
    int m_master = -1;
    int m_slave = -1; // kept open: without any, a client's end would be an error
    int m_cycles = 0; // of the clock in a bit
    int m_due = 0; // cycles for which an answer may still come
    int m_count = 0; // cycles to the next look at the line
    int m_bit = -1; // of the character received; -1: none
    int m_character = 0;
    QByteArray m_answers;
};

}

#endif
