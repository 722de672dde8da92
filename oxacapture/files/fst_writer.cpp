// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/fst_writer.h"

#include "files/fail.h"
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/time_axis.h"
#include "oxacapture/waveform/fst_blocks.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace OXA_CAPTURE {

namespace {

constexpr char kProgram[] = "vcd2fst";
constexpr qint64 kCopiedAtOnce = 1 << 20; // bytes

bool copy(const QString& path, QIODevice& out)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray bytes;
    while (!(bytes = file.read(kCopiedAtOnce)).isEmpty()) {
        if (out.write(bytes) != bytes.size())
            return false;
    }
    return file.atEnd();
}

/// The program, which is ended with this object.
class Vcd2Fst {
public:
    explicit Vcd2Fst(const QString& path)
    {
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        // Packed by zlib: smaller, and about as fast.
        m_process.start(kProgram, {"--zlibpack", "-", path});
    }
    ~Vcd2Fst()
    {
        m_process.kill();
        m_process.waitForFinished(-1);
    }
    Q_DISABLE_COPY(Vcd2Fst)

    bool isStarted() { return m_process.waitForStarted(-1); }
    QIODevice& input() { return m_process; }

    /// Waits until it has read what was written to `input`.
    bool takesAll()
    {
        while (m_process.bytesToWrite() > 0) {
            if (!m_process.waitForBytesWritten(-1))
                return false;
        }
        return true;
    }

    bool finishes()
    {
        if (!takesAll())
            return false;
        m_process.closeWriteChannel();
        m_process.waitForFinished(-1);
        return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }

private:
    QProcess m_process;
};

}

bool writeAsFst(QIODevice& out, const DumpText& dump, const Progress& goesOn, QString* error)
{
    // The program replaces its file, also a device.
    const QTemporaryDir directory;
    const QString path = directory.filePath("dump.fst");
    Vcd2Fst program(path);
    if (!program.isStarted())
        return OXA::fail(error,
            QString("%1, which writes FST files, cannot be started; install the package gtkwave")
                .arg(kProgram));
    bool ok = true;
    const Progress feed = [&](int percent) {
        ok = ok && program.takesAll();
        return ok && goesOn(percent);
    };
    if (!dump(program.input(), feed, error) && ok)
        return false;
    // The program reports no failed write, such as to a full disk.
    if (!ok || !program.finishes() || !hasWholeFstBlocks(path))
        return OXA::fail(
            error, QString("%1 failed; is there space in %2?").arg(kProgram, QDir::tempPath()));
    return copy(path, out);
}

bool writeFst(QIODevice& out, const Capture& capture, const Progress& goesOn,
    const CaptureFileOptions& options, QString* error)
{
    const QByteArray text = TimeAxis(capture).text().toUtf8();
    const auto dump = [&](QIODevice& vcd, const Progress& feed, QString* reason) {
        if (text.size() > kMostFstVersion)
            vcd.write("$comment\n    " + text + "\n$end\n");
        return writeVcd(vcd, capture, feed, options, reason);
    };
    return writeAsFst(out, dump, goesOn, error);
}

}
