// SPDX-License-Identifier: Apache-2.0
#include "wave_colors.h"

#include <QCoreApplication>
#include <QPalette>

#include <cmath>

namespace {

constexpr int kOpaque = 255;
constexpr int kGridAlpha = 45; // visible inside and outside of windows
constexpr int kWindowPart = 50; // of 255, the tint of windows
constexpr double kLeastContrast = 3; // of lines on a background
constexpr int kContrastStep = 25; // of 255

struct RowColor {
    const char* key;
    const char* name;
    QRgb onLight; // 0: the color of texts
    QRgb onDark;
};

constexpr RowColor kColors[] = {
    {"",       QT_TRANSLATE_NOOP("WaveView", "Usual"),         0,        0       },
    {"blue",   QT_TRANSLATE_NOOP("WaveView", "Blue"),          0x1a3cf0, 0x6a92ff},
    {"orange", QT_TRANSLATE_NOOP("WaveView", "Orange"),        0xd06a00, 0xe08a1a},
    {"green",  QT_TRANSLATE_NOOP("WaveView", "Green"),         0x0a9080, 0xa8f0e0},
    {"purple", QT_TRANSLATE_NOOP("WaveView", "Purple"),        0x7a10b8, 0xd8a2ff},
    {"brown",  QT_TRANSLATE_NOOP("WaveView", "Brown"),         0x5a2a08, 0xb87a58},
    {"text",   QT_TRANSLATE_NOOP("WaveView", "Color of text"), 0,        0       },
};
static_assert(std::size(kColors) == kRowColors + 1);

double linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

/// `color`, changed towards the texts' color until it is visible on the background.
QColor readable(const QColor& color, const QPalette& palette)
{
    const QColor& base = palette.color(QPalette::Base);
    const QColor& text = palette.color(QPalette::Text);
    QColor result = color;
    for (int part = kContrastStep; contrast(result, base) < kLeastContrast && part < kOpaque;
         part += kContrastStep)
        result = opaque(text, color, part);
    return result;
}

}

WaveColors waveColors(const QPalette& palette)
{
    const QColor& base = palette.color(QPalette::Base);
    const bool dark = base.lightness() < 128;
    const auto pick = [&](QRgb onLight, QRgb onDark) {
        return readable(QColor(dark ? onDark : onLight), palette);
    };
    WaveColors colors;
    colors.signal = pick(0x0a7480, 0x9fe8e8);
    colors.bus = pick(0x1848d8, 0x80a6fd);
    colors.event = pick(0x9a5800, 0xffc116);
    colors.unknown = pick(0x7a0a2a, 0xfc7f8c);
    colors.notLookedFor = pick(0x808080, 0x808080);
    colors.text = palette.color(QPalette::Text);
    for (int i = 0; i < kRowColors; ++i) {
        const RowColor& color = kColors[i + 1];
        colors.rows[i] = color.onLight ? pick(color.onLight, color.onDark) : colors.text;
    }
    colors.base = base;
    colors.window = opaque(dark ? QColor(0xc0a850) : QColor(0xffd75f), base, kWindowPart);
    colors.border = pick(0xa07a10, 0xc0a850);
    colors.trigger = pick(0xc44601, 0xfd8532);
    colors.grid = colors.text;
    colors.grid.setAlpha(kGridAlpha);
    colors.cursors[0] = pick(0x8102f5, 0xd385ff);
    colors.cursors[1] = pick(0x0a7480, 0xa8eef0);
    colors.mark = colors.text;
    return colors;
}

QString rowColorKey(int number) { return kColors[number].key; }

QString rowColorName(int number)
{
    return QCoreApplication::translate("WaveView", kColors[number].name);
}

int rowColorOf(const QString& key)
{
    for (int i = 0; i <= kRowColors; ++i) {
        if (key == kColors[i].key)
            return i;
    }
    return 0;
}

// Large opaque areas are drawn in a third of the time of transparent ones.
QColor opaque(const QColor& color, const QColor& ground, int part)
{
    const auto mix = [part](int a, int b) { return (a * part + b * (kOpaque - part)) / kOpaque; };
    return {mix(color.red(), ground.red()), mix(color.green(), ground.green()),
        mix(color.blue(), ground.blue())};
}

double contrast(const QColor& a, const QColor& b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::fmax(first, second) / std::fmin(first, second);
}
