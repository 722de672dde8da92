// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_SIGROK_SESSION_H
#define OXACAPTURE_WAVEFORM_SIGROK_SESSION_H

#include <QStringList>

#include <zip.h>

namespace OXA_CAPTURE {

/// Reads the digital channels of a sigrok session: a zip archive with a file "metadata" and the
/// samples, in one file or several. Only the metadata is in memory as a whole.
class SigrokSession {
public:
    SigrokSession() = default;
    ~SigrokSession();
    Q_DISABLE_COPY(SigrokSession)

    // On failure, each has set `error()`.

    bool open(const QString& path);

    /// The next samples: up to `size` bytes, which need not end with a sample. 0 at the end, -1 on
    /// failure.
    qint64 read(char* data, qint64 size);

    const QString& error() const { return m_error; }

    /// The channels' names by their bits, the least significant of a sample's first byte first;
    /// empty for a bit without a channel.
    const QStringList& channels() const { return m_channels; }
    int sampleBytes() const { return m_sampleBytes; }
    double hz() const { return m_hz; } ///< samples in a second; 0: unknown
    int percentRead() const;

private:
    bool fail(const QString& text);
    bool failDamaged(const QString& reason);
    bool readMetadata();
    bool takeMetadata(const QString& text);
    bool findSamples();
    qint64 bytesOf(const QByteArray& file) const;

    zip_t* m_zip = nullptr;
    zip_file_t* m_file = nullptr; // of the samples, the one being read
    QByteArray
        m_samples; // the name of the file of the samples, or what those of several begin with
    QList<QByteArray> m_files; // of the samples, not read yet
    QStringList m_channels;
    int m_sampleBytes = 0;
    double m_hz = 0;
    qint64 m_bytes = 0; // of the samples
    qint64 m_read = 0; // of these
    QString m_error;
};

}

#endif
