// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/serial_link.h"

#include "oxautils/generate/uart_defines.h"

#include <QElapsedTimer>
#include <QSerialPort>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr char kSync = char(0xa7);

// The first byte of a frame; its lowest five bits number it.
constexpr int kEnds = 0x80; // the scan ends
constexpr int kQuiet = 0x40; // the bits that come back are not sent
constexpr int kSetsRate = 0x20;
constexpr int kNumbers = 0x1f;

constexpr int kSumBytes = 2;
constexpr int kMostLiterals = 15;
constexpr int kMostZeros = 0xfff;
constexpr int kMostFrame = 6 + kMostLiterals; // characters

// How many zeros one frame asks for: a damaged answer is asked for again as a whole.
constexpr int kLeastChunk = 16;
constexpr int kFirstChunk = 1024;

constexpr int kFastestStep = 7;
constexpr int kLeastPatience = 50; // ms; an adapter may keep characters back for 16
constexpr int kFirstPatience = 500; // ms
constexpr int kMostPatience = 4000; // ms
constexpr int kLags = 4; // the patience in times of what the last answer took
constexpr int kLook = 100; // ms between two calls of `goesOn`
constexpr int kAttempts = 40; // in a row of which none gets further
constexpr int kMostSilences = 8;
constexpr int kFirstSilences = 4; // while it is not known whether there is an analyzer
constexpr int kSameRate = 3; // attempts, before the analyzer is taken to have left its rate
constexpr int kRateTests = 3;
constexpr int kTestedZeros = 16;

quint16 crc16(const QByteArray& bytes)
{
    quint16 crc = 0xffff;
    for (const char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = quint16(crc >> 1 ^ (crc & 1 ? 0x8408 : 0));
    }
    return crc;
}

QByteArray withSum(QByteArray bytes)
{
    const quint16 crc = crc16(bytes);
    return bytes.append(char(crc & 0xff)).append(char(crc >> 8));
}

// The bits with zeros in front, which cores ignore: the first cycle of a scan moves none, and the
// last bit has to be a byte's last.
QByteArray padded(const BitString& bits)
{
    QByteArray bytes(bits.size() / 8 + 1, '\0');
    const int pad = bytes.size() * 8 - bits.size();
    for (int i = 0; i < bits.size(); ++i) {
        if (bits.at(i))
            bytes[(pad + i) / 8] = char(bytes[(pad + i) / 8] | 1 << (pad + i) % 8);
    }
    return bytes;
}

BitString lastBits(const QByteArray& bytes, int size)
{
    BitString bits;
    for (int at = bytes.size() * 8 - size; at < bytes.size() * 8; ++at)
        bits.append(bytes[at / 8] >> at % 8 & 1);
    return bits;
}

}

/// What one exchange shifts: bytes, and then zeros.
struct SerialLink::Frame {
    int flags = 0;
    QByteArray literals;
    int zeros = 0; ///< bytes; of `kSetsRate` the rate's step

    int answerSize() const
    {
        return flags & kQuiet || flags & kSetsRate ? 0 : literals.size() + zeros;
    }
};

SerialLink::SerialLink() = default;
SerialLink::~SerialLink() = default;

bool SerialLink::connectTo(const QString& device, int baud)
{
    m_device = device;
    m_baud = baud;
    m_step = 0;
    m_patience = kFirstPatience;
    m_silences = kMostSilences - kFirstSilences;
    m_zeros = kFirstChunk;
    m_port = std::make_unique<QSerialPort>(device);
    m_port->setBaudRate(baud);
    m_port->setStopBits(QSerialPort::TwoStop); // so that answers keep up with literals
    if (!m_port->open(QIODevice::ReadWrite))
        return fail(device + ": " + m_port->errorString());
    return reset() && raiseRate(kFastestStep);
}

bool SerialLink::send(const QByteArray& bytes)
{
    m_port->write(bytes);
    while (m_port->bytesToWrite() > 0) {
        if (!m_goesOn())
            return fail("interrupted");
        if (!m_port->waitForBytesWritten(kLook) && m_port->error() != QSerialPort::TimeoutError)
            return fail(m_device + ": " + m_port->errorString());
        m_port->clearError();
    }
    return true;
}

// Receives up to `size` bytes; fewer when nothing comes for as long as the link is patient.
bool SerialLink::receive(int size, QByteArray& bytes, int& lag)
{
    bytes.clear();
    QElapsedTimer silence;
    silence.start();
    while (bytes.size() < size && silence.elapsed() < m_patience) {
        if (!m_goesOn())
            return fail("interrupted");
        if (m_port->bytesAvailable() == 0
            && !m_port->waitForReadyRead(std::min(kLook, m_patience))) {
            if (m_port->error() != QSerialPort::TimeoutError)
                return fail(m_device + ": " + m_port->errorString());
            m_port->clearError();
        }
        const QByteArray more = m_port->read(size - bytes.size());
        if (!more.isEmpty())
            lag = std::max(lag, int(silence.restart()));
        bytes += more;
    }
    return true;
}

// Receives the answer with `size` bytes of data that begins with `head`; what comes before it
// belongs to a frame that was given up. Nothing when the answer is damaged or does not come. `lag`
// is the longest time without a character, in ms.
bool SerialLink::receiveAnswer(char head, int size, QByteArray& answer, int& lag)
{
    const int whole = 1 + size + kSumBytes;
    const auto isWhole = [&] {
        const QByteArray last = answer.right(whole);
        return last.size() == whole && last[0] == head && withSum(last.left(1 + size)) == last;
    };
    QByteArray more;
    do {
        if (!receive(std::max(int(whole - answer.size()), 1), more, lag))
            return false;
        answer += more;
    } while (!isWhole() && !more.isEmpty());
    m_silences = answer.isEmpty() ? m_silences + 1 : 0;
    answer = isWhole() ? answer.right(whole) : QByteArray();
    return true;
}

SerialLink::Outcome SerialLink::exchange(const Frame& frame, QByteArray* data)
{
    m_number = (m_number + 1) & kNumbers;
    const char head = char(frame.flags | m_number);
    QByteArray request;
    request += head;
    request += char(frame.literals.size() << 4 | frame.zeros >> 8);
    request += char(frame.zeros & 0xff);
    request += frame.literals;
    QByteArray answer;
    int lag = 0;
    if (!send(kSync + withSum(request)) || !receiveAnswer(head, frame.answerSize(), answer, lag))
        return Outcome::Failed;
    if (!answer.isEmpty()) {
        if (data)
            *data = answer.mid(1, frame.answerSize());
        m_patience = std::min(std::max(kLeastPatience, kLags * lag), kMostPatience);
        return Outcome::Taken;
    }
    m_patience = std::min(2 * m_patience, kMostPatience);
    if (m_silences < kMostSilences)
        return Outcome::Lost;
    fail(m_device
        + ": nothing answers; is the analyzer's clock running, and are its two pins connected?");
    return Outcome::Failed;
}

// Sends the frame until it is taken. The zeros before it complete a frame that was cut off.
bool SerialLink::repeat(const Frame& frame)
{
    const int step = m_step;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        // At a framing error the analyzer returns to its first rate. Zeros at that rate are one.
        if (attempt % kSameRate == kSameRate - 1 && m_step > 0 && !setStep(0))
            return false;
        if (!send(QByteArray(kMostFrame, '\0')))
            return false;
        const Outcome outcome = exchange(frame);
        if (outcome == Outcome::Failed)
            return false;
        if (outcome == Outcome::Taken)
            return m_step == step || raiseRate(step);
    }
    return fail(QString("%1: the line damages or loses too much: none of %2 frames arrived")
                    .arg(m_device, QString::number(kAttempts)));
}

// The zero pushes what a damaged frame has shifted out of where it could be a command.
bool SerialLink::reset() { return repeat({kEnds, {}, 1}); }

bool SerialLink::scanIr(const BitString&) { return true; }

// The own end of the line alone.
bool SerialLink::setStep(int step)
{
    m_step = step;
    return m_port->setBaudRate(m_baud << step) || fail(m_device + ": " + m_port->errorString());
}

// Whether frames arrive. The zeros that they shift address nothing.
bool SerialLink::works()
{
    int taken = 0;
    for (int test = 0; test < 2 * kRateTests && taken < kRateTests && test - taken < kRateTests;
         ++test)
        taken += exchange({0, {}, kTestedZeros}) == Outcome::Taken ? 1 : 0;
    return taken == kRateTests;
}

SerialLink::Outcome SerialLink::tryStep(int step)
{
    const Outcome outcome = exchange({kSetsRate, {}, step});
    if (outcome != Outcome::Taken)
        return outcome;
    const int before = m_step;
    if (setStep(step) && works())
        return Outcome::Taken;
    m_silences = 0;
    return setStep(before) && reset() ? Outcome::Lost : Outcome::Failed;
}

bool SerialLink::raiseRate(int most)
{
    for (int step = m_step + 1; step <= most && m_baud << step <= OXA::kMostBaud; ++step) {
        const Outcome outcome = tryStep(step);
        if (outcome == Outcome::Failed)
            return false;
        if (outcome == Outcome::Lost)
            break;
    }
    return true;
}

// What of `out` follows byte `at`. What was received before is shifted again, but not sent again.
SerialLink::Frame SerialLink::nextFrame(const QByteArray& out, int at, int received) const
{
    Frame frame;
    const bool known = at < received;
    const int end = known ? received : out.size();
    frame.flags = known ? kQuiet : 0;
    const auto zerosFrom = [&](int from) {
        int to = from;
        while (to < end && to - from < kMostZeros && out[to] == '\0')
            ++to;
        return to - from;
    };
    while (at < end && frame.literals.size() < kMostLiterals
        && (zerosFrom(at) < kMostFrame - kMostLiterals && at + zerosFrom(at) < end))
        frame.literals += out[at++];
    frame.zeros = std::min(zerosFrom(at), known ? kMostZeros : m_zeros);
    return frame;
}

SerialLink::Outcome SerialLink::shiftOnce(const QByteArray& out, QByteArray& in)
{
    for (int at = 0; at < out.size();) {
        const Frame frame = nextFrame(out, at, in.size());
        QByteArray data;
        const Outcome outcome = exchange(frame, &data);
        if (outcome != Outcome::Taken)
            return outcome;
        in += data;
        at += frame.literals.size() + frame.zeros;
    }
    m_zeros = std::min(2 * m_zeros, kFirstChunk);
    return Outcome::Taken;
}

// Begins again after a damaged frame: zeros take a clock cycle a bit in the analyzer when their
// answer is not sent. What is read does not change meanwhile, or its sum is wrong.
bool SerialLink::shift(const QByteArray& out, QByteArray& in)
{
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const int received = in.size();
        const Outcome outcome = shiftOnce(out, in);
        if (outcome != Outcome::Lost)
            return outcome == Outcome::Taken;
        if (in.size() > received)
            attempt = 0;
        m_zeros = std::max(m_zeros / 2, kLeastChunk);
        if (!reset())
            return false;
    }
    return fail(QString("%1: the line damages or loses too much").arg(m_device));
}

bool SerialLink::endScan()
{
    const Frame frame {kEnds, {}, 0};
    const Outcome outcome = exchange(frame);
    return outcome == Outcome::Taken || (outcome == Outcome::Lost && repeat(frame));
}

bool SerialLink::scanDr(const BitString& out, BitString* in)
{
    QByteArray bytes;
    if (!shift(padded(out), bytes) || !endScan())
        return false;
    if (in)
        *in = lastBits(bytes, out.size());
    return true;
}

}
