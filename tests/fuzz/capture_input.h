#ifndef TESTS_FUZZ_CAPTURE_INPUT_H
#define TESTS_FUZZ_CAPTURE_INPUT_H

#include "fuzz_support.h"

#include "oxacapture/files/capture_result.h"

#include <QFile>

namespace OXA_CAPTURE {

constexpr int kMostCores = 3;
constexpr double kClocks[] = {0, 1, 999, 27e6, 1.5e9, 1e12};

/// Makes a capture of an input.
class CaptureInput {
public:
    CaptureInput(const uint8_t* data, size_t size)
        : m_data(data)
        , m_end(data + size)
    {
    }

    bool more() const { return m_data != m_end; }
    int below(int limit) { return more() ? *m_data++ % limit : 0; }

    QString text()
    {
        QByteArray bytes;
        for (int left = below(10); left > 0 && more(); --left)
            bytes += char(*m_data++);
        return QString::fromUtf8(bytes);
    }

    OXA::SignalItem item()
    {
        OXA::SignalItem item;
        const int kind = below(8);
        item.name = text();
        for (int bit = kind - 4; bit >= 0; --bit) {
            OXA::SignalItem own;
            own.name = kind == 7 ? text() : QString("%1[%2]").arg(item.name, QString::number(bit));
            item.subItems += own;
        }
        return item;
    }

    CapturedCore core(int index)
    {
        CapturedCore core;
        core.index = index;
        int width = 0;
        for (int left = 1 + below(4); left > 0; --left) {
            core.items += item();
            width += core.items.last().bitCount();
        }
        const SampleLayout layout({width});
        SampleTable table(layout);
        std::vector<Window> windows;
        for (int left = below(3); left > 0; --left) {
            const qint64 first = table.size();
            for (int samples = below(9); samples > 0; --samples) {
                std::vector<quint64> row(size_t(layout.rowWords()));
                for (int bit = 0; bit < width; ++bit)
                    setBit(layout, row, 0, bit, Logic(below(3)));
                table.append(row.data());
            }
            const qint64 samples = table.size() - first;
            const qint64 trigger = below(10);
            windows.push_back({first, samples, trigger < samples ? first + trigger : kNoSample});
        }
        core.windows = cutWindows(windows, table);
        return core;
    }

    Capture capture()
    {
        Capture capture;
        const double clockHz = kClocks[below(int(std::size(kClocks)))];
        for (int i = 0; i < kMostCores && (i == 0 || more()); ++i) {
            capture.push_back(core(5 * i + below(5)));
            capture.back().clockHz = clockHz;
        }
        return capture;
    }

private:
    const uint8_t* m_data;
    const uint8_t* m_end;
};

/// The bytes that the writer for the ending makes of a capture.
inline QByteArray written(const Capture& capture, const char* ending)
{
    static const QString folder = QString("/dev/shm/fuzz_writer.%1.").arg(getpid());
    QString error;
    require(writeCapture(folder + ending, capture, &error), "a capture can be written");
    QFile file(folder + ending);
    require(file.open(QIODevice::ReadOnly), "what was written is there");
    return file.readAll();
}

/// The sample number `number` of all windows of a core, and where it lies.
struct Taken {
    const CapturedWindow* window = nullptr; // null: there are fewer
    int windowNumber = 0;
    qint64 sample = 0;

    Taken(const CapturedCore& core, qint64 number)
    {
        for (size_t i = 0; i < core.windows.size() && !window; ++i) {
            if (number < core.windows[i].samples.size()) {
                window = &core.windows[i];
                windowNumber = int(i);
                sample = number;
            }
            number -= core.windows[i].samples.size();
        }
    }

    char bit(int bit) const { return "01x"[int(window->samples.bit(sample, 0, bit))]; }
    bool isTrigger() const { return sample == window->triggerOffset(); }
};

inline qint64 sampleCount(const CapturedCore& core)
{
    qint64 count = 0;
    while (Taken(core, count).window)
        ++count;
    return count;
}

}

#endif
