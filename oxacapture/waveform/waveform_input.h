// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_WAVEFORM_INPUT_H
#define OXACAPTURE_WAVEFORM_WAVEFORM_INPUT_H

#include <QFile>

#include <memory>

class QProcess;
class QTemporaryFile;

namespace OXA_CAPTURE {

class SessionDump;

/// The name that stands for the standard input or output of the process.
constexpr char kStandardStream[] = "-";

/// The text of the value change dump in a file: a dump, one that gzip compressed, a sigrok session
/// as a dump, or an FST file, which an installed program converts. The kind is known by the file's
/// first bytes.
///
/// Nothing is written to the disk, except for what cannot be read in order: an FST file or a
/// session from a pipe. Memory does not grow with the file.
class WaveformInput {
public:
    explicit WaveformInput(const QString& path); ///< `kStandardStream`: the standard input
    ~WaveformInput(); ///< ends the program

    // On failure, each has set `error()`.

    bool open();
    /// Up to `size` bytes; 0 at the end of the text, -1 on failure.
    qint64 read(char* data, qint64 size);

    const QString& error() const { return m_error; }

    /// How much of the file is read when `position` bytes of its text are; 0 when that is not
    /// known.
    int percentRead(qint64 position) const;

private:
    struct Inflation;

    bool fail(const QString& text);
    qint64 failToRead(const QString& text);
    bool inflateFile();
    QString seekablePath();
    bool openSession();
    bool convertFst();
    bool saveStream(QString& path);
    qint64 readInflated(char* data, qint64 size);
    qint64 readSession(char* data, qint64 size);
    qint64 readConverted(char* data, qint64 size);

    QString m_path;
    QFile m_file;
    qint64 m_size = 0; // of the file; 0 when it is not known
    std::unique_ptr<Inflation> m_inflation;
    std::unique_ptr<QTemporaryFile> m_saved; // from a pipe
    std::unique_ptr<SessionDump> m_session;
    std::unique_ptr<QProcess> m_process; // converts an FST file
    QString m_error;
};

}

#endif
