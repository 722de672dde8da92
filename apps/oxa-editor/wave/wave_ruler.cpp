// SPDX-License-Identifier: Apache-2.0
#include "wave_ruler.h"

#include "quantity.h"

#include <cmath>

namespace {

constexpr double kSlip = 1e-6; // of a step, by which computed times may be wrong

/// The smallest of 1, 2, 5 times a power of ten that is at least `wanted`.
double roundStep(double wanted)
{
    const double decade = std::pow(10, std::floor(std::log10(wanted)));
    for (const int factor : {1, 2, 5}) {
        if (decade * factor >= wanted * (1 - kSlip))
            return decade * factor;
    }
    return decade * 10;
}

std::vector<RulerTick> sampleTicks(const WaveScale& scale, qint64 samples, int room, int width)
{
    const auto step = qint64(std::llround(roundStep(std::fmax(room / scale.pixels(), 1))));
    std::vector<RulerTick> ticks;
    qint64 tick = qint64(scale.first()) / step * step;
    for (; tick < samples && scale.xOf(double(tick)) < width; tick += step)
        ticks.push_back({int(scale.xOf(double(tick))), QString::number(tick)});
    return ticks;
}

/// Seconds between two ticks, by the visible samples of `section`.
double stepOf(const WaveScale& scale, const WaveTimes& times,
    const std::pair<qint64, qint64>& section, int room)
{
    const double width = scale.visible() * scale.pixels();
    const qint64 first = qMax(section.first, qint64(scale.sampleAt(0)));
    const qint64 last = qMin(section.second - 1, qint64(scale.sampleAt(width)) + 1);
    if (last <= first)
        return 0;
    const double perPixel
        = (times.at(last) - times.at(first)) / (scale.xOf(double(last)) - scale.xOf(double(first)));
    return perPixel > 0 ? roundStep(room * perPixel) : 0;
}

/// The time of a sample with a fraction.
double timeAt(const WaveTimes& times, double sample)
{
    const auto whole = qint64(sample);
    const double time = times.at(whole);
    return whole + 1 < times.section(whole).second
        ? time + (sample - double(whole)) * (times.at(whole + 1) - time)
        : time;
}

std::vector<RulerTick> timeTicks(
    const WaveScale& scale, qint64 samples, const WaveTimes& times, int room, int width)
{
    std::vector<RulerTick> ticks;
    double step = 0;
    double next = 0; // the least time of the next tick in the section
    qint64 sectionOfNext = -1;
    for (int x = 0; x < width && scale.sampleAt(x) < double(samples);) {
        const auto sample = qint64(scale.sampleAt(x));
        const auto [first, end] = times.section(sample);
        if (step == 0)
            step = stepOf(scale, times, {first, end}, room);
        const double now = std::ceil(timeAt(times, scale.sampleAt(x)) / step - kSlip) * step;
        next = first == sectionOfNext ? std::fmax(next, now) : now;
        const double place = times.sampleAt(next, sample);
        if (step == 0 || place >= double(end)) { // nothing more in this section
            x = qMax(x + 1, int(std::ceil(std::fmin(scale.xOf(double(end)), width))));
            continue;
        }
        const int tick = scale.pixelOf(place);
        if (tick < width)
            ticks.push_back({tick, timeText(next, step)});
        x = qMax(x, tick) + qMax(room - 1, 1);
        next += step * (1 - kSlip);
        sectionOfNext = first;
    }
    return ticks;
}

}

std::vector<RulerTick> rulerTicks(
    const WaveScale& scale, qint64 samples, const WaveTimes* times, int room, int width)
{
    return times && times->isKnown() ? timeTicks(scale, samples, *times, room, width)
                                     : sampleTicks(scale, samples, room, width);
}
