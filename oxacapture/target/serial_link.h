// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_SERIAL_LINK_H
#define OXACAPTURE_TARGET_SERIAL_LINK_H

#include "oxacapture/target/jtag_link.h"

#include <QByteArray>

#include <functional>
#include <memory>

class QSerialPort;

namespace OXA_CAPTURE {

/// A serial port to an analyzer that was generated with a UART link (docs/uart-protocol.md).
///
/// Lost, doubled and damaged characters are detected, and what they concern is sent again. The
/// analyzer's data register is always selected, so instructions are ignored.
class OXACAPTURE_EXPORT SerialLink : public JtagLink {
public:
    SerialLink();
    ~SerialLink() override;

    /// Called before a wait for the analyzer, and ten times a second during it: when it returns
    /// false, the call fails.
    void setGoesOn(const std::function<bool()>& goesOn) { m_goesOn = goesOn; }

    /// Opens `device`, such as "/dev/ttyUSB1" or "COM3", and finds the analyzer that starts at
    /// `baud` bits a second. Then doubles the rate as often as both ends can follow.
    bool connectTo(const QString& device, int baud);

    bool reset() override;
    bool scanIr(const BitString& out) override;
    bool scanDr(const BitString& out, BitString* in) override;

private:
    struct Frame;
    enum class Outcome {
        Taken, ///< the analyzer has done what the frame asks for, and its answer is whole
        Lost, ///< one of both was damaged
        Failed, ///< the port has failed, or nothing answers any more
    };

    bool send(const QByteArray& bytes);
    bool receive(int size, QByteArray& bytes, int& lag);
    bool receiveAnswer(char head, int size, QByteArray& answer, int& lag);
    Outcome exchange(const Frame& frame, QByteArray* data = nullptr);
    Frame nextFrame(const QByteArray& out, int at, int received) const;
    Outcome shiftOnce(const QByteArray& out, QByteArray& in);
    bool shift(const QByteArray& out, QByteArray& in);
    bool repeat(const Frame& frame);
    bool endScan();
    bool setStep(int step);
    bool works();
    Outcome tryStep(int step);
    bool raiseRate(int most);

    std::unique_ptr<QSerialPort> m_port;
    std::function<bool()> m_goesOn = [] { return true; };
    QString m_device;
    int m_baud = 0; // at which the analyzer starts
    int m_step = 0; // the rate is m_baud << m_step
    int m_number = 0; // of the frame
    int m_patience = 0; // ms without a character
    int m_silences = 0; // in a row: frames without any answer
    int m_zeros = 0; // bytes of zeros in a frame
};

}

#endif
