// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/serial_pads.h"

#include <asm/termbits.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace OXA_CAPTURE {

namespace {

constexpr int kWait = 20; // ms for a client's characters
constexpr int kTimeout = 10000; // ms without an answer of the simulator
constexpr int kMostTime = 600000; // ms for a slice, on a busy machine
constexpr int kSlice = 24; // bits at once when there is nothing to send
// The longest an analyzer is silent before it answers: 4095 bytes that it does not send, 12 cycles
// each, and some characters.
constexpr int kMostDue = 80000;
constexpr int kBits = 8;
constexpr size_t kMostAtOnce = 64; // characters of a client

}

SerialPads::~SerialPads()
{
    for (const int handle : {m_master, m_slave}) {
        if (handle >= 0)
            close(handle);
    }
}

bool SerialPads::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool SerialPads::open(const QString& address)
{
    return openTerminal() && (m_pads.connectTo(address) || fail(m_pads.error()));
}

// A terminal that passes every byte on as it is.
bool SerialPads::openTerminal()
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    char name[PATH_MAX];
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0
        || ptsname_r(m_master, name, sizeof name) != 0)
        return fail(QString("no pseudo-terminal: ") + strerror(errno));
    m_slave = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios2 settings = {};
    if (m_slave < 0 || ioctl(m_slave, TCGETS2, &settings) != 0)
        return fail(QString("%1: %2").arg(name, strerror(errno)));
    settings.c_iflag = 0;
    settings.c_oflag = 0;
    settings.c_lflag = 0;
    settings.c_cflag = CS8 | CREAD | CLOCAL | B115200;
    settings.c_ispeed = settings.c_ospeed = kBaud;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    if (ioctl(m_slave, TCSETS2, &settings) != 0)
        return fail(QString("%1: %2").arg(name, strerror(errno)));
    m_device = name;
    return true;
}

// The rate that the client has set, in bits a second.
int SerialPads::clientRate() const
{
    termios2 settings = {};
    const bool known = ioctl(m_master, TCGETS2, &settings) == 0 && settings.c_ospeed > 0;
    return known ? int(std::min<unsigned>(settings.c_ospeed, kClockHz / 2)) : kBaud;
}

bool SerialPads::readClient(QByteArray& bytes)
{
    pollfd handle = {m_master, POLLIN, 0};
    if (poll(&handle, 1, m_due > 0 ? 0 : kWait) <= 0 || !(handle.revents & POLLIN))
        return true;
    char buffer[kMostAtOnce];
    const ssize_t size = read(m_master, buffer, sizeof buffer);
    if (size < 0 && errno != EINTR && errno != EAGAIN && errno != EIO)
        return fail(QString("%1: %2").arg(m_device, strerror(errno)));
    bytes = QByteArray(buffer, int(std::max<ssize_t>(size, 0)));
    return true;
}

bool SerialPads::step()
{
    QByteArray bytes;
    if (!readClient(bytes))
        return false;
    m_cycles = kClockHz / clientRate();
    QByteArray levels; // one for each cycle
    for (const char byte : qAsConst(bytes)) {
        levels += QByteArray(m_cycles, '0');
        for (int bit = 0; bit < kBits; ++bit)
            levels += QByteArray(m_cycles, byte >> bit & 1 ? '1' : '0');
        levels += QByteArray(2 * m_cycles, '1');
    }
    if (!bytes.isEmpty())
        m_due = kMostDue;
    else if (m_due > 0)
        levels = QByteArray(kSlice * m_cycles, '1');
    m_due = std::max(int(m_due - levels.size()), 0);
    return run(levels) && sendClient();
}

// Clocks the pads once for each level at the receiving one.
bool SerialPads::run(const QByteArray& levels)
{
    if (levels.isEmpty())
        return true;
    QByteArray pads;
    pads.reserve(3 * levels.size());
    for (const char level : levels)
        (pads += level) += level == '1' ? "5R" : "4R";
    const auto isWhole = [&levels](const QByteArray& so) { return so.size() >= levels.size(); };
    QByteArray answer;
    if (!m_pads.exchange(pads, isWhole, answer, {kTimeout, kMostTime, levels.size()}))
        return fail("the simulator stopped: " + m_pads.error());
    for (const char level : qAsConst(answer))
        receive(level == '1');
    return true;
}

// A cycle of the line from the analyzer.
void SerialPads::receive(bool level)
{
    if (m_bit < 0) {
        if (!level) {
            m_bit = 0;
            m_character = 0;
            m_count = m_cycles + m_cycles / 2; // the middle of the first bit
        }
    } else if (--m_count == 0) {
        m_count = m_cycles;
        if (m_bit < kBits) {
            m_character |= level << m_bit++;
        } else {
            if (level)
                m_answers += char(m_character);
            m_bit = -1;
            m_due = kMostDue;
        }
    }
}

bool SerialPads::sendClient()
{
    while (!m_answers.isEmpty()) {
        const ssize_t size = write(m_master, m_answers.constData(), size_t(m_answers.size()));
        if (size < 0 && errno != EINTR)
            return fail(QString("%1: %2").arg(m_device, strerror(errno)));
        m_answers.remove(0, int(std::max<ssize_t>(size, 0)));
    }
    return true;
}

}
