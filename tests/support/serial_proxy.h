// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_SERIAL_PROXY_H
#define TESTS_SUPPORT_SERIAL_PROXY_H

#include <QByteArray>
#include <QString>

#include <asm/termbits.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <random>
#include <thread>

/// Opens a pseudo-terminal that passes every byte on; returns its device, or nothing.
inline QString openTerminal(int& master, int& slave)
{
    char name[128] = "";
    master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (grantpt(master) != 0 || unlockpt(master) != 0 || ptsname_r(master, name, sizeof name) != 0)
        return {};
    slave = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios2 raw = {};
    raw.c_cflag = CS8 | CREAD | CLOCAL | B115200;
    raw.c_ispeed = raw.c_ospeed = 115200;
    ioctl(slave, TCSETS2, &raw);
    return name;
}

/// A serial line between a client and a target's pseudo-terminal, on which characters go wrong. The
/// target sees the rate that the client sets.
class SerialProxy {
public:
    int lost = 0, doubled = 0, flipped = 0; ///< of a thousand characters
    std::atomic<qint64> characters {0}; ///< of both directions

    ~SerialProxy()
    {
        m_over = true;
        if (m_thread.joinable())
            m_thread.join();
        for (const int handle : {m_client, m_slave, m_target})
            close(handle);
    }

    /// Returns the device for the client; nothing when there is no pseudo-terminal.
    QString start(const QString& target, unsigned seed)
    {
        m_random.seed(seed);
        const QString name = openTerminal(m_client, m_slave);
        m_target = open(target.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        m_thread = std::thread([this] { run(); });
        return name;
    }

private:
    void run()
    {
        while (!m_over) {
            pollfd handles[] = {
                {m_client, POLLIN, 0},
                {m_target, POLLIN, 0}
            };
            poll(handles, 2, 20);
            termios2 settings = {};
            if (handles[0].revents & POLLIN && ioctl(m_client, TCGETS2, &settings) == 0) {
                ioctl(m_target, TCSETS2, &settings);
                pass(m_client, m_target);
            }
            if (handles[1].revents & POLLIN)
                pass(m_target, m_client);
        }
    }

    bool happens(int ofThousand) { return int(m_random() >> 8) % 1000 < ofThousand; }

    void pass(int from, int to)
    {
        char in[256];
        QByteArray out;
        const ssize_t size = read(from, in, sizeof in);
        for (ssize_t i = 0; i < size; ++i) {
            const char byte = char(in[i] ^ (happens(flipped) ? 1 << (m_random() >> 8) % 8 : 0));
            if (!happens(lost))
                out += QByteArray(happens(doubled) ? 2 : 1, byte);
        }
        characters += out.size();
        if (write(to, out.constData(), size_t(out.size())) < 0)
            m_over = true;
    }

    int m_client = -1, m_slave = -1, m_target = -1;
    std::minstd_rand m_random;
    std::atomic<bool> m_over {false};
    std::thread m_thread;
};

#endif
