// SPDX-License-Identifier: Apache-2.0
// How long the waveform view takes for a frame of 1920 x 1080 and for one with all rows, on 192
// signals over 65,536 samples, at zooms from all samples to single ones. The program fails when a
// median is over a sixtieth of a second at the first size, at 100 and 200 %.
//
//   wave_paint [PICTURE-DIRECTORY]
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_view.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QTreeView>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <random>

namespace {

constexpr qint64 kSamples = 65536;
constexpr int kBuses = 8; // of eight bits
constexpr int kBits = 128; // with those of the buses, 200 rows
constexpr int kFrames = 20;
constexpr double kLimit = 1000.0 / 60; // ms

OXA::SignalItem named(const QString& name)
{
    OXA::SignalItem item;
    item.name = name;
    return item;
}

QList<OXA::SignalItem> makeItems()
{
    QList<OXA::SignalItem> items;
    for (int i = 0; i < kBuses; ++i) {
        OXA::SignalItem bus = named(QString("bus%1[7:0]").arg(i));
        for (int bit = 7; bit >= 0; --bit)
            bus.subItems += named(QString("bus%1[%2]").arg(i).arg(bit));
        items += bus;
    }
    for (int i = 0; i < kBits; ++i)
        items += named(QString("signal%1").arg(i));
    return items;
}

/// Every bit changes at random: the first at each sample, the next half as often, down to one in
/// 256.
WaveformPtr makeWaveform()
{
    OXA_CAPTURE::CapturedCore core;
    core.items = makeItems();
    const int width = OXA::flattenedNames(core.items).size();
    OXA_CAPTURE::SampleTable samples(OXA_CAPTURE::SampleLayout({width}));
    std::mt19937_64 random(1);
    std::vector<quint64> row(size_t(samples.layout().rowWords()));
    for (qint64 sample = 0; sample < kSamples; ++sample) {
        for (int bit = 0; bit < width; ++bit) {
            if (random() % (quint64(1) << bit % 9) == 0)
                row[size_t(bit / 64)] ^= quint64(1) << bit % 64;
        }
        samples.append(row.data());
    }
    OXA_CAPTURE::Window place;
    place.samples = kSamples;
    place.triggerSample = kSamples / 2;
    core.windows.push_back({place, std::move(samples)});
    return capturedWaveform(core, nullptr);
}

/// Processor time of this thread in ms, which other programs do not affect.
double processorTime()
{
    timespec time {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// The median and the longest time of a frame, in ms of processor time.
std::pair<double, double> timeOf(QWidget& widget, double ratio)
{
    QImage frame(widget.size() * ratio, QImage::Format_RGB32);
    frame.setDevicePixelRatio(ratio);
    std::vector<double> times;
    for (int i = 0; i < kFrames; ++i) {
        const double begin = processorTime();
        widget.render(&frame);
        times.push_back(processorTime() - begin);
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}

/// Whether the frames of `widget` are within the limit at every zoom.
bool measure(WaveView& view, QWidget& widget, const char* what, double ratio, const QString& folder)
{
    bool inTime = true;
    for (const double pixels : {0.0, 0.1, 0.5, 1.0, 2.0, 4.0, 10.0, 30.0}) {
        view.canvas()->fit();
        if (pixels > 0) {
            view.canvas()->zoom(pixels / view.canvas()->scale().pixels(), 0);
            view.canvas()->moveTo(kSamples / 3.0);
        }
        const auto [median, longest] = timeOf(widget, ratio);
        std::printf("%-28s %6.2f pixels a sample %7.1f ms (longest %.1f)\n", what,
            view.canvas()->scale().pixels(), median, longest);
        inTime = inTime && median <= kLimit;
        if (!folder.isEmpty())
            widget.grab().save(QString("%1/wave-%2.png").arg(folder).arg(pixels));
    }
    return inTime;
}

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QElapsedTimer timer;
    timer.start();
    const WaveformPtr waveform = makeWaveform();
    std::printf("waveform made in %lld ms\n", timer.elapsed());
    WaveView view;
    view.resize(1920, 1080);
    view.show();
    view.setWaveform(waveform);
    QApplication::processEvents();
    const QString folder = application.arguments().value(1);
    bool inTime = measure(view, view, "1920 x 1080", 1, folder);
    inTime = measure(view, view, "1920 x 1080 at 200 %", 2, {}) && inTime;
    view.rows()->expandAll();
    view.resize(1920, 3000);
    QApplication::processEvents();
    measure(view, *view.canvas(), "all rows, the samples only", 1, {});
    return inTime ? 0 : 1;
}
