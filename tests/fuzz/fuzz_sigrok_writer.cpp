// Captures of any names and values as sigrok sessions: a channel a signal, a unit a sample.
#include "capture_input.h"

#include <QSet>

#include <zip.h>

using namespace OXA_CAPTURE;

namespace {

QByteArray member(zip_t* zip, const char* name)
{
    zip_stat_t stat;
    require(zip_stat(zip, name, 0, &stat) == 0, "the session is complete");
    QByteArray bytes(int(stat.size), '\0');
    zip_file_t* file = zip_fopen(zip, name, 0);
    require(file && zip_fread(file, bytes.data(), stat.size) == bytes.size(), "it can be read");
    zip_fclose(file);
    return bytes;
}

/// The channels of the session, checked to be those of the capture.
int requireChannels(const QByteArray& metadata, int expected)
{
    const QList<QByteArray> lines = metadata.split('\n');
    QSet<QByteArray> names;
    int unitSize = 0;
    for (const QByteArray& line : lines) {
        if (line.startsWith("probe"))
            names += line.mid(line.indexOf('=') + 1);
        else if (line.startsWith("unitsize="))
            unitSize = line.mid(9).toInt();
        else
            require(line.isEmpty() || line.startsWith('[') || line.startsWith("sigrok version=")
                    || line.startsWith("capturefile=") || line.startsWith("total ")
                    || line.startsWith("samplerate="),
                "no line that a name made");
    }
    require(names.size() == expected, "a name a channel");
    require(!names.contains(""), "no channel without a name");
    require(unitSize == (expected + 7) / 8, "a bit a channel");
    return unitSize;
}

void requireSigrok(const Capture& capture)
{
    const QByteArray session = written(capture, "sr");
    zip_source_t* source
        = zip_source_buffer_create(session.constData(), zip_uint64_t(session.size()), 0, nullptr);
    zip_t* zip = zip_open_from_source(source, ZIP_RDONLY, nullptr);
    require(zip, "a session is an archive");
    require(member(zip, "version") == "2", "the version");
    const QByteArray data = member(zip, "logic-1-1");
    const QByteArray metadata = member(zip, "metadata");
    zip_close(zip);
    int channels = 0;
    qint64 samples = 0;
    for (const CapturedCore& core : capture) {
        QStringList names = OXA::flattenedNames(core.items);
        names.removeDuplicates();
        channels += names.size() + 2;
        samples = std::max(samples, sampleCount(core));
    }
    const int unitSize = requireChannels(metadata, channels);
    require(data.size() == samples * unitSize, "a unit a sample");
    for (qint64 number = 0; number < samples; ++number) {
        int channel = 0;
        const auto requireHigh = [&](bool high) {
            require((data.at(int(number) * unitSize + channel / 8) >> channel % 8 & 1) == int(high),
                "a level is what was captured");
            ++channel;
        };
        for (const CapturedCore& core : capture) {
            const Taken taken(core, number);
            const QStringList names = OXA::flattenedNames(core.items);
            for (int bit = 0; bit < names.size(); ++bit) {
                if (names.indexOf(names.at(bit)) == bit)
                    requireHigh(taken.window && taken.bit(bit) == '1');
            }
            requireHigh(taken.window && taken.isTrigger());
            requireHigh(taken.window && taken.windowNumber % 2 == 1);
        }
    }
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    requireSigrok(CaptureInput(data, size).capture());
    return 0;
}
