// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/waveform_input.h"

#include "oxacapture/waveform/fst_blocks.h"

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

}

/// A program that writes a file of another kind as a dump to its standard output.
struct WaveformInput::Converter {
    const char* kind;
    std::string_view mark; // first bytes of the file
    const char* program;
    const char* package;
    QStringList (*arguments)(const QString& path);
    bool isFst;
};

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
    const auto fst = [](const QString& path) { return QStringList {"-f", path}; };
    const auto session = [](const QString& path) { return QStringList {"-i", path, "-O", "vcd"}; };
    static const Converter kConverters[] = {
        {"FST file",       kFstMark,       "fst2vcd",    "gtkwave",    fst,     true },
        {"FST file",       kPackedFstMark, "fst2vcd",    "gtkwave",    fst,     true },
        {"sigrok session", "PK\x03\x04",   "sigrok-cli", "sigrok-cli", session, false},
    };
    const bool isOpen = m_path == kStandardStream ? m_file.open(STDIN_FILENO, QIODevice::ReadOnly)
                                                  : m_file.open(QIODevice::ReadOnly);
    if (!isOpen)
        return fail("cannot be read: " + m_file.errorString());
    m_size = m_file.isSequential() ? 0 : m_file.size();
    const QByteArray start = m_file.peek(kFstMarkSize);
    if (start.startsWith(kGzipMark))
        return inflateFile();
    for (const Converter& converter : kConverters) {
        if (start.startsWith(QByteArray(converter.mark.data(), int(converter.mark.size()))))
            return convertFile(converter);
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

bool WaveformInput::convertFile(const Converter& converter)
{
    QString path = m_path;
    if ((m_path == kStandardStream || m_size == 0) && !saveStream(path))
        return false;
    if (converter.isFst && !hasWholeFstBlocks(path))
        return fail("the FST file is truncated, or still being written");
    m_converter = &converter;
    m_process = std::make_unique<QProcess>();
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(QProcess::nullDevice()); // has no more than "cannot open"
    // An absolute path is never an option.
    m_process->start(converter.program, converter.arguments(QFileInfo(path).absoluteFilePath()),
        QProcess::ReadOnly);
    if (m_process->waitForStarted(-1))
        return true;
    return fail(QString("cannot be read: %1 converts a file of this kind (%2), and cannot be"
                        " started; install the package %3")
                    .arg(converter.program, converter.kind, converter.package));
}

qint64 WaveformInput::read(char* data, qint64 size)
{
    if (m_inflation)
        return readInflated(data, size);
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

qint64 WaveformInput::readConverted(char* data, qint64 size)
{
    while (m_process->bytesAvailable() == 0) {
        if (m_process->waitForReadyRead(-1))
            continue;
        m_process->waitForFinished(-1);
        if (m_process->exitStatus() == QProcess::NormalExit && m_process->exitCode() == 0)
            return 0;
        return failToRead(QString("%1 cannot read it; the %2 may be damaged%3")
                              .arg(m_converter->program, m_converter->kind,
                                  m_converter->isFst ? "" : ", or have no sample rate"));
    }
    return m_process->read(data, size);
}

int WaveformInput::percentRead(qint64 position) const
{
    if (m_size == 0 || m_process)
        return 0;
    return int(100 * (m_inflation ? m_file.pos() : position) / m_size);
}

}
