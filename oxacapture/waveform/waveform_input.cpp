// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/waveform_input.h"

#include "oxacapture/waveform/fst_blocks.h"
#include "oxacapture/waveform/session_dump.h"
#include "oxacapture/waveform/time_text.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryFile>

#include <string_view>
#include <unistd.h>
#include <zlib.h>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kBufferSize = 1 << 16;
constexpr int kGzipOnly = 16; // added to the window's bits for zlib
constexpr char kGzipMark[] = "\x1f\x8b";
constexpr char kArchiveMark[] = "PK\x03\x04";
constexpr char kFstProgram[] = "fst2vcd";

}

struct WaveformInput::Inflation {
    Inflation() { ready = inflateInit2(&stream, MAX_WBITS + kGzipOnly) == Z_OK; }
    ~Inflation() { inflateEnd(&stream); }
    Q_DISABLE_COPY(Inflation)

    z_stream stream {};
    bool ready = false;
    bool ended = false; // after a member's last byte
    QByteArray buffer = QByteArray(int(kBufferSize), '\0');
};

WaveformInput::WaveformInput(const QString& path)
    : m_path(path)
    , m_file(path)
{
}

WaveformInput::~WaveformInput()
{
    if (!m_process)
        return;
    m_process->kill();
    m_process->waitForFinished(-1);
}

bool WaveformInput::fail(const QString& text)
{
    m_error = text;
    return false;
}

qint64 WaveformInput::failToRead(const QString& text)
{
    fail(text);
    return -1;
}

bool WaveformInput::open()
{
    const bool isOpen = m_path == kStandardStream ? m_file.open(STDIN_FILENO, QIODevice::ReadOnly)
                                                  : m_file.open(QIODevice::ReadOnly);
    if (!isOpen)
        return fail("cannot be read: " + m_file.errorString());
    m_size = m_file.isSequential() ? 0 : m_file.size();
    const QByteArray start = m_file.peek(kFstMarkSize);
    if (start.startsWith(kGzipMark))
        return inflateFile();
    if (start.startsWith(kArchiveMark))
        return openSession();
    for (const std::string_view mark :
        {std::string_view(kFstMark), std::string_view(kPackedFstMark)}) {
        if (start.startsWith(QByteArray(mark.data(), int(mark.size()))))
            return convertFst();
    }
    return true;
}

bool WaveformInput::inflateFile()
{
    m_inflation = std::make_unique<Inflation>();
    return m_inflation->ready || fail("there is no memory to decompress it");
}

/// Copies what comes through a pipe into a temporary file.
bool WaveformInput::saveStream(QString& path)
{
    m_saved = std::make_unique<QTemporaryFile>();
    QByteArray chunk;
    bool ok = m_saved->open();
    while (ok && !(chunk = m_file.read(kBufferSize)).isEmpty())
        ok = m_saved->write(chunk) == chunk.size();
    if (!ok || !m_saved->flush())
        return fail("cannot be saved in a temporary file: " + m_saved->errorString());
    path = m_saved->fileName();
    return true;
}

/// The path of the file, or of a copy when it comes through a pipe; empty on failure.
QString WaveformInput::seekablePath()
{
    QString path = m_path;
    const bool isPipe = m_path == kStandardStream || m_size == 0;
    return isPipe && !saveStream(path) ? QString() : path;
}

bool WaveformInput::openSession()
{
    const QString path = seekablePath();
    if (path.isEmpty())
        return false;
    m_session = std::make_unique<SessionDump>();
    return m_session->open(path) || fail(m_session->error());
}

bool WaveformInput::convertFst()
{
    const QString path = seekablePath();
    if (path.isEmpty())
        return false;
    if (!hasWholeFstBlocks(path))
        return fail("the FST file is truncated, or still being written");
    m_process = std::make_unique<QProcess>();
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(QProcess::nullDevice()); // has no more than "cannot open"
    // An absolute path is never an option.
    QStringList arguments {"-f", QFileInfo(path).absoluteFilePath()};
    if (isFstVersionFull(path, kTimeTextStart))
        arguments += "-e"; // with comments, of which one has the whole text
    m_process->start(kFstProgram, arguments, QProcess::ReadOnly);
    if (m_process->waitForStarted(-1))
        return true;
    return fail(QString("cannot be read: %1 converts an FST file, and cannot be started; install"
                        " the package gtkwave")
                    .arg(kFstProgram));
}

qint64 WaveformInput::read(char* data, qint64 size)
{
    if (m_inflation)
        return readInflated(data, size);
    if (m_session)
        return readSession(data, size);
    if (m_process)
        return readConverted(data, size);
    const qint64 got = m_file.read(data, size);
    return got < 0 ? failToRead("cannot be read further: " + m_file.errorString()) : got;
}

qint64 WaveformInput::readInflated(char* data, qint64 size)
{
    z_stream& stream = m_inflation->stream;
    stream.next_out = reinterpret_cast<Bytef*>(data);
    stream.avail_out = uInt(size);
    while (stream.avail_out == uInt(size)) {
        if (stream.avail_in == 0) {
            const qint64 got = m_file.read(m_inflation->buffer.data(), kBufferSize);
            if (got < 0)
                return failToRead("cannot be read further: " + m_file.errorString());
            if (got == 0 && m_inflation->ended)
                return 0;
            if (got == 0)
                return failToRead("the compressed file is truncated");
            stream.next_in = reinterpret_cast<Bytef*>(m_inflation->buffer.data());
            stream.avail_in = uInt(got);
        }
        if (m_inflation->ended && inflateReset(&stream) != Z_OK) // members follow one another
            return failToRead("the compressed file is damaged");
        const int result = inflate(&stream, Z_NO_FLUSH);
        m_inflation->ended = result == Z_STREAM_END;
        if (result != Z_OK && result != Z_STREAM_END)
            return failToRead(QString("the compressed file is damaged: ") + stream.msg);
    }
    return size - qint64(stream.avail_out);
}

qint64 WaveformInput::readSession(char* data, qint64 size)
{
    const qint64 got = m_session->read(data, size);
    return got < 0 ? failToRead(m_session->error()) : got;
}

qint64 WaveformInput::readConverted(char* data, qint64 size)
{
    while (m_process->bytesAvailable() == 0) {
        if (m_process->waitForReadyRead(-1))
            continue;
        m_process->waitForFinished(-1);
        if (m_process->exitStatus() == QProcess::NormalExit && m_process->exitCode() == 0)
            return 0;
        return failToRead(
            QString("%1 cannot read it; the FST file may be damaged").arg(kFstProgram));
    }
    return m_process->read(data, size);
}

int WaveformInput::percentRead(qint64 position) const
{
    if (m_session)
        return m_session->percentRead();
    if (m_size == 0 || m_process)
        return 0;
    return int(100 * (m_inflation ? m_file.pos() : position) / m_size);
}

}
