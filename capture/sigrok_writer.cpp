#include "capture/capture_writers.h"

#include <QHash>
#include <QIODevice>

#include <zip.h>

namespace OXA_CAPTURE {

namespace {

constexpr int kPackedAt = 50; // percent that are done when the packing begins
constexpr double kPartAtOnce = 0.01; // of the packing, between two figures

// One bit of the session's samples. The cores run side by side; behind its last sample a core's
// channels are low, and so is what is unknown.
struct Channel {
    enum Source { Data, Trigger, WindowParity };

    QString name;
    const CapturedCore* core;
    Source source;
    int bit; // of the core's samples
};

std::vector<Channel> channelsOf(const Capture& capture)
{
    std::vector<Channel> channels;
    QHash<QString, int> uses;
    const auto add = [&](const Channel& channel) {
        channels.push_back(channel);
        ++uses[channel.name];
    };
    for (const CapturedCore& core : capture) {
        const QStringList names = OXA::flattenedNames(core.items);
        for (int bit = 0; bit < names.size(); ++bit) {
            if (names.indexOf(names.at(bit)) == bit) // what is captured twice is shown once
                add({names.at(bit), &core, Channel::Data, bit});
        }
        add({freeName(core, "trigger"), &core, Channel::Trigger, 0});
        add({freeName(core, "window"), &core, Channel::WindowParity, 0});
    }
    for (Channel& channel : channels) {
        if (uses.value(channel.name) > 1)
            channel.name.prepend(QString("core%1.").arg(channel.core->index));
    }
    return channels;
}

QByteArray metadata(const std::vector<Channel>& channels, int unitSize, double clockHz)
{
    QString text = "[global]\nsigrok version=0.5.2\n\n[device 1]\ncapturefile=logic-1\n";
    text += QString("total probes=%1\ntotal analog=0\n").arg(channels.size());
    if (clockHz > 0)
        text += QString("samplerate=%1 Hz\n").arg(std::max(qRound64(clockHz), qint64(1)));
    int number = 0;
    for (const Channel& channel : channels) {
        const QString name = QString(channel.name).remove('\\').simplified();
        text += QString("probe%1=%2\n").arg(QString::number(++number), name);
    }
    return (text + QString("unitsize=%1\n").arg(unitSize)).toUtf8();
}

bool isHigh(const Channel& channel, size_t window, qint64 sample)
{
    const CapturedWindow& captured = channel.core->windows[window];
    switch (channel.source) {
    case Channel::Data:
        return captured.samples.bit(sample, 0, channel.bit) == Logic::One;
    case Channel::Trigger:
        return sample == captured.triggerOffset();
    case Channel::WindowParity:
        return window % 2 == 1;
    }
    return false;
}

// A sample a unit; empty when it was stopped.
QByteArray logicData(const Capture& capture, const std::vector<Channel>& channels, int unitSize,
    const Progress& goesOn)
{
    qint64 samples = 0;
    for (const CapturedCore& core : capture)
        samples = std::max(samples, capturedSamples(core));
    QByteArray data(int(samples) * unitSize, '\0');
    for (size_t place = 0; place < channels.size(); ++place) {
        if (!goesOn(int(place * kPackedAt / channels.size())))
            return {};
        const Channel& channel = channels[place];
        char* unit = data.data() + place / 8;
        for (size_t window = 0; window < channel.core->windows.size(); ++window) {
            const qint64 size = channel.core->windows[window].samples.size();
            for (qint64 sample = 0; sample < size; ++sample, unit += unitSize) {
                if (isHigh(channel, window, sample))
                    *unit = char(*unit | 1 << (place % 8));
            }
        }
    }
    return data;
}

// A zip in memory; what it is made of has to live until it is read.
class Archive {
public:
    explicit Archive(const Progress& goesOn)
        : m_goesOn(goesOn)
        , m_source(zip_source_buffer_create(nullptr, 0, 0, nullptr))
        , m_zip(zip_open_from_source(m_source, ZIP_TRUNCATE, nullptr))
    {
        zip_source_keep(m_source);
        zip_register_progress_callback_with_state(
            m_zip, kPartAtOnce,
            [](zip_t*, double part, void* archive) {
                static_cast<Archive*>(archive)->m_part = part;
            },
            nullptr, this);
        zip_register_cancel_callback_with_state(
            m_zip,
            [](zip_t*, void* archive) { return int(!static_cast<Archive*>(archive)->goesOn()); },
            nullptr, this);
    }
    ~Archive()
    {
        if (m_zip)
            zip_discard(m_zip);
        zip_source_free(m_source);
    }

    bool add(const char* name, const QByteArray& content)
    {
        zip_source_t* source
            = zip_source_buffer(m_zip, content.constData(), zip_uint64_t(content.size()), 0);
        const zip_int64_t index = zip_file_add(m_zip, name, source, 0);
        // The same samples make the same file.
        return index >= 0 && zip_file_set_mtime(m_zip, zip_uint64_t(index), 0, 0) == 0;
    }

    bool read(QByteArray& bytes)
    {
        if (zip_close(m_zip) != 0)
            return false;
        m_zip = nullptr;
        zip_stat_t stat;
        zip_stat_init(&stat);
        if (zip_source_stat(m_source, &stat) != 0 || zip_source_open(m_source) != 0)
            return false;
        bytes.resize(int(stat.size));
        const bool whole = zip_source_read(m_source, bytes.data(), stat.size) == qint64(stat.size);
        zip_source_close(m_source);
        return whole;
    }

    QString error() const { return m_zip ? zip_strerror(m_zip) : "no memory"; }

private:
    bool goesOn() const { return m_goesOn(kPackedAt + int(m_part * (100 - kPackedAt))); }

    const Progress& m_goesOn;
    double m_part = 0; // that is packed
    zip_source_t* m_source;
    zip_t* m_zip;
};

}

bool writeSigrok(QIODevice& out, const Capture& capture, const Progress& goesOn, QString& error)
{
    const std::vector<Channel> channels = channelsOf(capture);
    const int unitSize = int(channels.size() + 7) / 8;
    const QByteArray version = "2";
    const double clockHz = capture.empty() ? 0 : capture.front().clockHz;
    const QByteArray about = metadata(channels, unitSize, clockHz);
    const QByteArray data = logicData(capture, channels, unitSize, goesOn);
    if (!goesOn(kPackedAt))
        return false;

    Archive archive(goesOn);
    QByteArray bytes;
    if (archive.add("version", version) && archive.add("metadata", about)
        && archive.add("logic-1-1", data) && archive.read(bytes))
        return out.write(bytes) == bytes.size();
    if (error.isEmpty()) // it was not stopped
        error = archive.error();
    return false;
}

}
