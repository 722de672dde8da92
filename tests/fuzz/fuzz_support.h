#ifndef TESTS_FUZZ_FUZZ_SUPPORT_H
#define TESTS_FUZZ_FUZZ_SUPPORT_H

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

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
    MemoryFile(const uint8_t* data, size_t size)
        : m_descriptor(memfd_create("fuzz", 0))
    {
        require(write(m_descriptor, data, size) == ssize_t(size), "the input is written");
    }
    ~MemoryFile() { close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int descriptor() const { return m_descriptor; }
    QString path() const { return QString("/proc/self/fd/%1").arg(m_descriptor); }

private:
    int m_descriptor;
};

/// Keeps the library's log quiet: what it says of bad input is of no interest here.
inline void silenceLog()
{
    static const bool once = [] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        return true;
    }();
    Q_UNUSED(once)
}

#endif
