// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_FUZZ_FUZZ_SUPPORT_H
#define TESTS_FUZZ_FUZZ_SUPPORT_H

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

/// What a target does with each input: it requires what has to hold.
void fuzz(const QByteArray& input);

/// Ends the run as a finding, whatever the build type.
inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// A file in memory, for functions that take a path.
class MemoryFile {
public:
    explicit MemoryFile(const QByteArray& content)
        : m_descriptor(memfd_create("fuzz", 0))
    {
        require(write(m_descriptor, content.constData(), size_t(content.size())) == content.size(),
            "the input is written");
    }
    ~MemoryFile() { close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    QString path() const { return QString("/proc/self/fd/%1").arg(m_descriptor); }

private:
    int m_descriptor;
};

#endif
