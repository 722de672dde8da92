// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/sigrok_session.h"

#include <QFile>
#include <QRegularExpression>

#include <cmath>

namespace OXA_CAPTURE {

namespace {

constexpr char kMetadata[] = "metadata";
constexpr qint64 kMostMetadata = 1 << 24; // bytes
constexpr int kMostChannels = 1 << 18;
constexpr double kLeastHz = 1e-3;
constexpr double kMostHz = 1e12;

/// Samples in a second, from "24 MHz"; 0 when it is no such text.
double frequencyOf(const QString& text)
{
    static const QRegularExpression frequency("^(\\d+(?:\\.\\d+)?) *([kMGT]?)(?:Hz)?$");
    const auto match = frequency.match(text);
    const QString prefix = match.captured(2);
    const int thousands = prefix.isEmpty() ? 0 : 1 + QString("kMGT").indexOf(prefix);
    const double hz = match.captured(1).toDouble() * std::pow(1000, thousands);
    return hz >= kLeastHz && hz <= kMostHz ? hz : 0;
}

}

SigrokSession::~SigrokSession()
{
    if (m_file)
        zip_fclose(m_file);
    if (m_zip)
        zip_discard(m_zip);
}

bool SigrokSession::fail(const QString& text)
{
    m_error = text;
    return false;
}

bool SigrokSession::failDamaged(const QString& reason)
{
    return fail("the sigrok session is damaged: " + reason);
}

bool SigrokSession::open(const QString& path)
{
    int code = 0;
    m_zip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &code);
    if (!m_zip) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        const QString reason = zip_error_strerror(&error);
        zip_error_fini(&error);
        return failDamaged(reason);
    }
    return readMetadata() && findSamples();
}

/// The size of an archived file; -1 when it is not there.
qint64 SigrokSession::bytesOf(const QByteArray& file) const
{
    zip_stat_t stat;
    zip_stat_init(&stat);
    const bool found
        = zip_stat(m_zip, file.constData(), 0, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE) != 0;
    return found ? qint64(stat.size) : -1;
}

bool SigrokSession::readMetadata()
{
    const qint64 size = bytesOf(kMetadata);
    if (size < 0)
        return fail("it is an archive, but no sigrok session: it has no file metadata");
    if (size > kMostMetadata)
        return failDamaged("the metadata has more than 16 MiB");
    QByteArray text(int(size), '\0');
    zip_file_t* const file = zip_fopen(m_zip, kMetadata, 0);
    const bool ok = file && zip_fread(file, text.data(), zip_uint64_t(size)) == size;
    const QString reason = file ? zip_file_strerror(file) : zip_strerror(m_zip);
    if (file)
        zip_fclose(file);
    return ok ? takeMetadata(QString::fromUtf8(text)) : failDamaged(reason);
}

/// Reads the lines of the first device that has samples: "probe3=name" and others.
bool SigrokSession::takeMetadata(const QString& text)
{
    static const QRegularExpression lineEnd("\r?\n");
    const QString channel("probe");
    for (const QString& line : text.split(lineEnd)) {
        if (line.startsWith('[') && !m_samples.isEmpty())
            break;
        const QString key = line.section('=', 0, 0).trimmed();
        const QString value = line.section('=', 1).trimmed();
        const int number = key.startsWith(channel) ? key.mid(channel.size()).toInt() : 0;
        if (number > kMostChannels)
            return failDamaged("there is no channel " + key);
        if (key == "capturefile")
            m_samples = value.toUtf8();
        else if (key == "samplerate")
            m_hz = frequencyOf(value);
        else if (key == "unitsize")
            m_sampleBytes = value.toInt();
        else if (number > 0) {
            while (m_channels.size() < number)
                m_channels += QString();
            m_channels[number - 1] = value.isEmpty() ? key : value;
        }
    }
    if (m_samples.isEmpty() || m_channels.isEmpty())
        return fail("the sigrok session has no digital channels");
    if (m_sampleBytes == 0)
        m_sampleBytes = (m_channels.size() + 7) / 8;
    return (m_sampleBytes >= (m_channels.size() + 7) / 8 && m_sampleBytes <= kMostChannels)
        || failDamaged("the channels do not fit into the samples");
}

bool SigrokSession::findSamples()
{
    for (int number = 1; m_files.isEmpty() || bytesOf(m_files.last()) >= 0; ++number)
        m_files += m_samples + '-' + QByteArray::number(number);
    m_files.removeLast();
    if (m_files.isEmpty())
        m_files += m_samples; // as older versions wrote them
    for (const QByteArray& file : qAsConst(m_files))
        m_bytes += bytesOf(file);
    if (m_bytes < 0)
        return failDamaged("it has no samples");
    return m_bytes % m_sampleBytes == 0 || failDamaged("its last sample is not complete");
}

qint64 SigrokSession::read(char* data, qint64 size)
{
    qint64 got = 0;
    while (got == 0 && (m_file || !m_files.isEmpty())) {
        if (!m_file)
            m_file = zip_fopen(m_zip, m_files.takeFirst().constData(), 0);
        got = m_file ? zip_fread(m_file, data, zip_uint64_t(size)) : -1;
        if (got < 0) {
            failDamaged(m_file ? zip_file_strerror(m_file) : zip_strerror(m_zip));
            return -1;
        }
        if (got == 0) {
            zip_fclose(m_file);
            m_file = nullptr;
        }
    }
    m_read += got;
    return got;
}

int SigrokSession::percentRead() const
{
    return m_bytes > 0 ? int(100 * double(m_read) / double(m_bytes)) : 100;
}

}
