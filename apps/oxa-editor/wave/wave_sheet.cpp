// SPDX-License-Identifier: Apache-2.0
#include "wave_sheet.h"

#include "wave_ruler.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using OXA_CAPTURE::kNoSample;

namespace {

constexpr int kTint = 40; // of 255, on the current row and the markers' samples
constexpr int kDimming = 150; // of 255, the background's part on dimmed samples
constexpr int kDash = 4; // dash and gap of a border
constexpr int kTick = 4; // height
constexpr int kTickRoom = 12; // characters between two numbers of the ruler
constexpr int kFlagSpace = 6; // beside the text of a flag
constexpr int kRulerSpace = 6; // above and below its two lines

QColor tinted(QColor color)
{
    color.setAlpha(kTint);
    return color;
}

/// The first window that ends after `sample`.
std::vector<WaveWindow>::const_iterator windowsFrom(
    const std::vector<WaveWindow>& windows, double sample)
{
    return std::upper_bound(
        windows.begin(), windows.end(), sample, [](double at, const WaveWindow& window) {
            return at < double(window.first + window.samples);
        });
}

}

int WaveSheet::rulerHeight(const QFont& font)
{
    return 2 * QFontMetrics(font).height() + kRulerSpace;
}

void WaveSheet::draw(QPainter& painter) const
{
    const WaveColors colors = waveColors(palette);
    const QRect below(0, ruler(), size.width(), size.height() - ruler());
    painter.setFont(font);
    painter.fillRect(QRect(0, 0, size.width(), ruler()),
        waveform().samples > 0 ? palette.button() : palette.base());
    drawGround(painter, waveform(), scale, below, colors);
    if (waveform().samples == 0)
        return;
    drawRuler(painter, colors);
    painter.setClipRect(below);
    drawRows(painter, colors);
    painter.setClipping(false);
    std::vector<Flag> flags;
    drawBorders(painter, colors, flags);
    if (isDimmed) {
        QColor veil = colors.base;
        veil.setAlpha(kDimming);
        painter.fillRect(below, veil);
    }
    drawMarkers(painter, colors, flags);
    drawFlags(painter, std::move(flags));
}

// Each pixel once.
void WaveSheet::drawGround(QPainter& painter, const Waveform& waveform, const WaveScale& scale,
    const QRect& area, const WaveColors& colors)
{
    const auto fill = [&](int from, int to, const QColor& color) {
        painter.fillRect(from, area.top(), to - from, area.height(), color);
    };
    const int right = area.right() + 1;
    for (int x = area.left(); x < right;) {
        const auto window = windowsFrom(waveform.windows, scale.sampleAt(x));
        if (window == waveform.windows.end())
            return fill(x, right, colors.base);
        const int from = int(qBound(double(x), scale.xOf(double(window->first)), 1.0 * right));
        const double end = scale.xOf(double(window->first + window->samples));
        const int to = int(qBound(from + 1.0, end, right + 1.0));
        fill(x, from, colors.base);
        fill(from, to, colors.window);
        x = to;
    }
}

void WaveSheet::drawRuler(QPainter& painter, const WaveColors& colors) const
{
    const QFontMetrics metrics(font);
    const QColor ink = palette.color(QPalette::ButtonText);
    const int room = kTickRoom * metrics.averageCharWidth();
    painter.setPen(ink);
    for (const RulerTick& tick : rulerTicks(scale, waveform().samples, times, room, size.width())) {
        painter.fillRect(tick.x, ruler(), 1, size.height() - ruler(), colors.grid);
        painter.fillRect(tick.x, ruler() - kTick, 1, kTick, ink);
        painter.drawText(tick.x + 2, ruler() - kRulerSpace / 2 - metrics.descent(), tick.text);
    }
}

void WaveSheet::drawRows(QPainter& painter, const WaveColors& colors) const
{
    WavePainter lanes(scale, waveform().samples, 0, size.width(), valueFont());
    for (const Row& row : rows) {
        const int top = ruler() + row.top;
        if (row.index == current)
            painter.fillRect(
                0, top, size.width(), row.height, tinted(palette.color(QPalette::Highlight)));
        if (model.row(row.index))
            lanes.add(model.lane(row.index), top, row.height);
        else
            painter.fillRect(0, top + row.height / 2, size.width(), 1, colors.grid);
    }
    lanes.paint(painter, colors);
}

void WaveSheet::drawBorders(
    QPainter& painter, const WaveColors& colors, std::vector<Flag>& flags) const
{
    for (int x = 0; x < size.width();) {
        const auto window = windowsFrom(waveform().windows, scale.sampleAt(x));
        if (window == waveform().windows.end() || scale.xOf(double(window->first)) >= size.width())
            return;
        const double end = scale.xOf(double(window->first + window->samples));
        for (const double border : {scale.xOf(double(window->first)), end})
            drawDashes(painter, border, colors.border);
        if (window->trigger != kNoSample)
            drawLine(
                painter, window->trigger, {0, window->triggerText(), colors.trigger, false}, flags);
        x = int(qBound(x + 1.0, end, 1.0 * size.width()));
    }
}

void WaveSheet::drawDashes(QPainter& painter, double x, const QColor& color) const
{
    if (x < 0 || x >= size.width())
        return;
    for (int y = ruler(); y < size.height(); y += 2 * kDash)
        painter.fillRect(int(x), y, 1, kDash, color);
}

void WaveSheet::drawMarkers(
    QPainter& painter, const WaveColors& colors, std::vector<Flag>& flags) const
{
    for (int marker = markers.count() - 1; marker >= 0; --marker) {
        const QColor color = marker < 2 ? colors.cursors[marker] : colors.mark;
        if (markers.at(marker) >= 0)
            drawLine(
                painter, markers.at(marker), {0, WaveMarkers::name(marker), color, true}, flags);
    }
}

/// A line where the sample begins, and a tint on it.
void WaveSheet::drawLine(
    QPainter& painter, qint64 sample, const Flag& flag, std::vector<Flag>& flags) const
{
    const double x = scale.xOf(double(sample));
    if (x < -1 || x > size.width())
        return;
    const double end = std::fmin(scale.xOf(double(sample) + 1), size.width());
    painter.fillRect(QRectF(x, ruler(), end - x, size.height() - ruler()), tinted(flag.color));
    painter.fillRect(int(x), 0, 1, size.height(), flag.color);
    flags.push_back({int(x), flag.text, flag.color, flag.isNeeded});
}

/// The flags of markers, A first, where they do not cover each other; then those of triggers.
void WaveSheet::drawFlags(QPainter& painter, std::vector<Flag> flags) const
{
    const QFontMetrics metrics(font);
    std::vector<QRect> places;
    std::reverse(flags.begin(), flags.end());
    for (const Flag& flag : flags) {
        QRect place(flag.x, 0, metrics.horizontalAdvance(flag.text) + kFlagSpace,
            metrics.height() + kRulerSpace / 2 - 1);
        const auto covers = [&](const QRect& other) { return other.intersects(place); };
        auto covered = std::find_if(places.begin(), places.end(), covers);
        for (; covered != places.end() && flag.isNeeded;
             covered = std::find_if(places.begin(), places.end(), covers))
            place.moveLeft(covered->right() + 1);
        if (covered != places.end())
            continue;
        places.push_back(place);
        painter.fillRect(place, flag.color);
        painter.setPen(palette.color(QPalette::Base));
        painter.drawText(place, Qt::AlignCenter, flag.text);
    }
}
