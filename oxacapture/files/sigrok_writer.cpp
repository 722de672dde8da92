// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_writers.h"

#include "files/fail.h"
#include "oxacapture/files/sample_grid.h"
#include "oxacapture/waveform/bus_range.h"
#include "oxacapture/waveform/unique_names.h"

#include <QHash>
#include <QIODevice>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cstring>
#include <zip.h>

namespace OXA_CAPTURE {

namespace {

constexpr double kLeastRate = 0.5; // Hz
constexpr qint64 kMostAtOnce = 1 << 20; // bytes, of samples and of the archive

// One bit of the session's samples. Before, between and after its core's windows it is 0, as are
// unknown values.
struct Channel {
    enum Source { Data, Trigger, WindowParity, Forced };

    QString name;
    const CapturedCore* core;
    Source source;
    int bit; // of the core's samples

    /// At a sample that was passed over.
    bool isUnknownBetween() const
    {
        return source == Trigger || source == Forced || (source == Data && !core->holds());
    }
};

// A name for each bit of a signal.
QStringList bitNames(const OXA::SignalItem& item)
{
    QStringList names = OXA::flattenedNames({item});
    if (!item.isBus())
        return names;
    const OXA::BitRange range = busRange(names, item.name);
    for (int bit = 0; bit < names.size(); ++bit)
        names[bit] = range.bitName(bit);
    return names;
}

std::vector<Channel> channelsOf(const Capture& capture)
{
    std::vector<Channel> channels;
    QHash<QString, int> uses;
    const auto add = [&](const Channel& channel) {
        channels.push_back(channel);
        ++uses[channel.name];
    };
    for (const CapturedCore& core : capture) {
        const QStringList bits = OXA::flattenedNames(core.items);
        QStringList names;
        for (const OXA::SignalItem& item : core.items)
            names += bitNames(item);
        QSet<QStringList> shown;
        for (int bit = 0; bit < bits.size(); ++bit) {
            const QStringList both {names.at(bit), bits.at(bit)};
            if (!shown.contains(both)) // signals captured twice are shown once
                add({names.at(bit), &core, Channel::Data, bit});
            shown += both;
        }
        add({freeName(core, "trigger"), &core, Channel::Trigger, 0});
        add({freeName(core, "window"), &core, Channel::WindowParity, 0});
        if (core.showsForced())
            add({freeName(core, "forced"), &core, Channel::Forced, 0});
    }
    for (Channel& channel : channels) {
        if (uses.value(channel.name) > 1)
            channel.name.prepend(QString("core%1.").arg(channel.core->index));
    }
    return channels;
}

// Names are on lines of their own in the session's metadata.
QString channelName(const QString& signal)
{
    static const QRegularExpression unusable("[^\\S ]|\\p{C}");
    return QString(signal).remove('\\').replace(unusable, " ").simplified();
}

QByteArray metadata(const std::vector<Channel>& channels, int unitSize, double hz)
{
    QString text = "[global]\nsigrok version=0.5.2\n\n[device 1]\ncapturefile=logic-1\n";
    text += QString("total probes=%1\ntotal analog=0\n").arg(channels.size());
    if (hz >= kLeastRate)
        text += QString("samplerate=%1 Hz\n").arg(qRound64(hz));
    int number = 0;
    UniqueNames names;
    for (const Channel& channel : channels) {
        text += QString("probe%1=%2\n")
                    .arg(QString::number(++number), names.take(channelName(channel.name)));
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
    case Channel::Forced:
        return captured.place.forced && sample == captured.triggerOffset();
    }
    return false;
}

// The samples of all channels as units, generated while the archive reads them, so that only a few
// are in memory at once.
class LogicData {
public:
    LogicData(const Capture& capture, const SampleGrid& grid, const std::vector<Channel>& channels,
        int unitSize, const Progress& goesOn)
        : m_grid(grid)
        , m_channels(channels)
        , m_unitSize(unitSize)
        , m_goesOn(goesOn)
        , m_samples(grid.size())
    {
        for (const CapturedCore& core : capture) {
            const auto isOther = [&core](const Channel& channel) { return channel.core != &core; };
            const size_t first = m_cores.empty() ? 0 : m_cores.back().endChannel;
            const auto begin = channels.begin() + std::ptrdiff_t(first);
            const auto end = std::find_if(begin, channels.end(), isOther);
            m_cores.push_back({&core, first, size_t(end - channels.begin())});
        }
    }

    /// The callback of the archive; `logic` is a LogicData.
    static zip_int64_t answer(void* logic, void* data, zip_uint64_t size, zip_source_cmd_t command)
    {
        auto& self = *static_cast<LogicData*>(logic);
        switch (command) {
        case ZIP_SOURCE_READ:
            return self.read(static_cast<char*>(data), qint64(size));
        case ZIP_SOURCE_STAT:
            return self.tellSize(*static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&self.m_error, data, size);
        case ZIP_SOURCE_SUPPORTS:
            return ZIP_SOURCE_SUPPORTS_READABLE;
        default:
            return 0;
        }
    }

private:
    // A core's channels, and its next sample.
    struct Place {
        const CapturedCore* core;
        size_t firstChannel;
        size_t endChannel;
        size_t window = 0;
        qint64 sample = 0;
    };

    zip_int64_t tellSize(zip_stat_t& stat) const
    {
        zip_stat_init(&stat);
        stat.size = zip_uint64_t(m_samples) * zip_uint64_t(m_unitSize);
        stat.valid = ZIP_STAT_SIZE;
        return sizeof stat;
    }

    zip_int64_t read(char* data, qint64 size)
    {
        qint64 done = 0;
        while (done < size && (m_at < m_made.size() || m_next < m_samples)) {
            if (m_at == m_made.size() && !makeMore())
                return -1;
            const qint64 now = std::min(size - done, qint64(m_made.size() - m_at));
            std::memcpy(data + done, m_made.constData() + m_at, size_t(now));
            done += now;
            m_at += int(now);
        }
        return done;
    }

    bool makeMore()
    {
        if (!m_goesOn(int(m_next * 100 / m_samples))) {
            zip_error_set(&m_error, ZIP_ER_CANCELLED, 0);
            return false;
        }
        const qint64 fitting = std::max(kMostAtOnce / m_unitSize, qint64(1));
        const qint64 count = std::min({fitting, kSamplesAtOnce, m_samples - m_next});
        m_made.fill('\0', int(count * m_unitSize)); // at most kMostAtOnce
        m_at = 0;
        for (qint64 i = 0; i < count; ++i)
            addUnit(m_next + i, m_made.data() + i * m_unitSize);
        m_next += count;
        return true;
    }

    void addUnit(qint64 number, char* unit)
    {
        for (size_t core = 0; core < m_cores.size(); ++core) {
            Place& place = m_cores[core];
            const std::vector<CapturedWindow>& windows = place.core->windows;
            // To the last sample that is not later.
            while (place.window < windows.size()
                && (windows[place.window].samples.size() == 0
                    || m_grid.at(core, place.window, place.sample + 1) <= number)) {
                if (++place.sample < windows[place.window].samples.size())
                    continue;
                ++place.window;
                place.sample = 0;
            }
            if (place.window == windows.size()
                || m_grid.at(core, place.window, place.sample) > number)
                continue;
            const bool passedOver = m_grid.after(core, place.window, place.sample) <= number;
            for (size_t i = place.firstChannel; i < place.endChannel; ++i) {
                if (!(passedOver && m_channels[i].isUnknownBetween())
                    && isHigh(m_channels[i], place.window, place.sample))
                    unit[i / 8] = char(unit[i / 8] | 1 << (i % 8));
            }
        }
    }

    const SampleGrid& m_grid;
    const std::vector<Channel>& m_channels;
    qint64 m_unitSize;
    const Progress& m_goesOn;
    qint64 m_samples; // units
    std::vector<Place> m_cores;
    qint64 m_next = 0; // next to generate
    QByteArray m_made;
    int m_at = 0; // next byte of the generated units to be read
    zip_error_t m_error = {};
};

// A compressed zip archive in memory; its sources have to exist until it is written.
class Archive {
public:
    Archive()
        : m_source(zip_source_buffer_create(nullptr, 0, 0, nullptr))
        , m_zip(zip_open_from_source(m_source, ZIP_TRUNCATE, nullptr))
    {
        zip_source_keep(m_source);
    }
    ~Archive()
    {
        if (m_zip)
            zip_discard(m_zip);
        zip_source_free(m_source);
    }

    bool add(const char* name, const QByteArray& content)
    {
        return add(
            name, zip_source_buffer(m_zip, content.constData(), zip_uint64_t(content.size()), 0));
    }
    bool add(const char* name, LogicData& content)
    {
        return add(name, zip_source_function(m_zip, LogicData::answer, &content));
    }

    bool write(QIODevice& out)
    {
        if (zip_close(m_zip) != 0)
            return false;
        m_zip = nullptr;
        if (zip_source_open(m_source) != 0)
            return false;
        QByteArray bytes(int(kMostAtOnce), '\0');
        qint64 got = 0;
        do {
            got = zip_source_read(m_source, bytes.data(), zip_uint64_t(bytes.size()));
        } while (got > 0 && out.write(bytes.constData(), got) == got);
        zip_source_close(m_source);
        return got == 0;
    }

    /// Why it could not be packed; empty once it is.
    QString error() const { return m_zip ? zip_strerror(m_zip) : QString(); }

private:
    bool add(const char* name, zip_source_t* source)
    {
        const zip_int64_t index = zip_file_add(m_zip, name, source, 0);
        // The same samples give the same file.
        return index >= 0 && zip_file_set_mtime(m_zip, zip_uint64_t(index), 0, 0) == 0;
    }

    zip_source_t* m_source;
    zip_t* m_zip;
};

}

bool writeSigrok(QIODevice& out, const Capture& capture, const Progress& goesOn,
    const CaptureFileOptions&, QString* error)
{
    const SampleGrid grid(capture);
    if (!grid.isUsable(error))
        return false;
    const std::vector<Channel> channels = channelsOf(capture);
    const int unitSize = int(channels.size() + 7) / 8;
    const QByteArray version = "2";
    const QByteArray about = metadata(channels, unitSize, grid.hz());
    LogicData data(capture, grid, channels, unitSize, goesOn);
    Archive archive;
    return (archive.add("version", version) && archive.add("metadata", about)
               && archive.add("logic-1-1", data) && archive.write(out))
        || OXA::fail(error, archive.error());
}

}
