// SPDX-License-Identifier: Apache-2.0
#include "wave_painter.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

using namespace OXA_CAPTURE;

namespace {

constexpr int kMargin = 3; // above and below a lane
constexpr int kSlope = 2; // half of a bus's change
constexpr int kSlopedWidth = 10; // of the narrowest run with slopes
constexpr int kFillAlpha = 50; // of 255
constexpr int kBusyAlpha = 160; // on the background outside of windows
constexpr int kGridAlpha = 45; // visible inside and outside of windows
constexpr int kOpaque = 255;
constexpr int kFirstCharacter = 0x20;
constexpr int kCharacters = 0x5f;
constexpr int kFewestDigits = 2; // of a value that are shown

QFont fixedFont(const QFont& ofSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (ofSize.pixelSize() > 0)
        font.setPixelSize(ofSize.pixelSize());
    else
        font.setPointSizeF(ofSize.pointSizeF());
    return font;
}

/// `color` as it looks on `ground` with an alpha of `part`: large opaque areas are drawn in a third
/// of the time.
QColor opaque(const QColor& color, const QColor& ground, int part)
{
    const auto mix = [part](int a, int b) { return (a * part + b * (kOpaque - part)) / kOpaque; };
    return {mix(color.red(), ground.red()), mix(color.green(), ground.green()),
        mix(color.blue(), ground.blue())};
}

}

WaveColors waveColors(const QPalette& palette)
{
    const bool dark = palette.color(QPalette::Base).lightness() < 128;
    const auto pick = [dark](QRgb onLight, QRgb onDark) { return QColor(dark ? onDark : onLight); };
    WaveColors colors;
    colors.signal = pick(0x146c2e, 0x6fd68a);
    colors.bus = pick(0x1c4fa0, 0x7fb2ff);
    colors.event = pick(0x7a4a00, 0xf0b860);
    colors.unknown = pick(0xb02020, 0xff7a70);
    colors.notLookedFor = pick(0xa0a0a0, 0x808080);
    colors.base = palette.color(QPalette::Base);
    colors.text = palette.color(QPalette::Text);
    colors.window = pick(0xfff7dc, 0x403c2a);
    colors.border = pick(0xb08a20, 0xc0a850);
    colors.trigger = pick(0xd01818, 0xff5a4a);
    colors.grid = palette.color(QPalette::Text);
    colors.grid.setAlpha(kGridAlpha);
    colors.cursors[0] = pick(0x8a1fa8, 0xe28cff);
    colors.cursors[1] = pick(0x00707e, 0x5ce0f0);
    return colors;
}

QFont valueFont()
{
    // Looking up a font takes longer than drawing some rows.
    static QFont usual = QGuiApplication::font();
    static QFont font = fixedFont(usual);
    if (usual != QGuiApplication::font()) {
        usual = QGuiApplication::font();
        font = fixedFont(usual);
    }
    return font;
}

WavePainter::WavePainter(
    const WaveScale& scale, qint64 samples, int left, int right, const QFont& font)
    : m_scale(scale)
    , m_samples(samples)
    , m_left(left)
    , m_right(qMin(right, int(std::ceil(scale.xOf(double(samples))))))
    , m_font(QRawFont::fromFont(font))
{
    QString characters;
    for (int i = 0; i < kCharacters; ++i)
        characters += QChar(kFirstCharacter + i);
    m_glyphOf = m_font.glyphIndexesForString(characters);
    m_digitWidth = qMax(QFontMetrics(font).horizontalAdvance('0'), 1);
}

void WavePainter::add(
    const WaveRow& row, Radix radix, const QHash<QString, QString>& states, int top, int height)
{
    const Lane lane {row, radix, states, top + kMargin, top + height - 1 - kMargin,
        row.isEvent       ? Event
            : row.isBus() ? Bus
                          : Signal};
    int busyFrom = -1;
    for (int x = m_left; x < m_right;) {
        const qint64 sample = qBound(qint64(0), qint64(m_scale.sampleAt(x)), m_samples - 1);
        const qint64 change = row.changes.next(sample + 1);
        const int end = qMin(m_right, int(m_scale.xOf(double(change))));
        if (end <= x) { // changes within this pixel
            busyFrom = busyFrom < 0 ? x : busyFrom;
            ++x;
            continue;
        }
        if (busyFrom >= 0)
            addBusy(lane, busyFrom, x - 1);
        busyFrom = -1;
        addRun(lane, sample, x, end);
        x = end;
    }
    if (busyFrom >= 0)
        addBusy(lane, busyFrom, m_right - 1);
}

// The pixels `from` to `to` contain changes; a single one is an edge.
void WavePainter::addBusy(const Lane& lane, int from, int to)
{
    if (to > from)
        m_busy[lane.ink] += QRect(QPoint(from, lane.high), QPoint(to, lane.low));
    else if (!lane.row.isBus())
        edge(lane.ink, from, lane.high, lane.low);
}

void WavePainter::addRun(const Lane& lane, qint64 sample, int from, int to)
{
    const Ink unknown = lane.row.isEvent ? NotLookedFor : Unknown;
    const int middle = (lane.high + lane.low) / 2;
    if (lane.row.isBus()) {
        const WaveValue value = lane.row.valueAt(sample);
        if (lane.row.isEvent && !value.isKnown())
            across(unknown, from, to, middle);
        else
            addBusRun(lane, value, value.isKnown() ? lane.ink : unknown, from, to);
        return;
    }
    switch (lane.row.bitAt(sample)) {
    case Logic::Zero:
        across(lane.ink, from, to, lane.low);
        break;
    case Logic::One:
        across(lane.ink, from, to, lane.high);
        m_fills[lane.ink] += QRect(QPoint(from, lane.high), QPoint(to - 1, lane.low));
        break;
    case Logic::Unknown:
        across(unknown, from, to, middle);
        if (!lane.row.isEvent) {
            m_fills[unknown] += QRect(QPoint(from, lane.high), QPoint(to - 1, lane.low));
            addText("x", from, to, middle);
        }
        break;
    }
}

void WavePainter::addBusRun(const Lane& lane, const WaveValue& value, Ink ink, int from, int to)
{
    if (!value.isKnown())
        m_fills[ink] += QRect(QPoint(from, lane.high), QPoint(to - 1, lane.low));
    const int slope = to - from >= kSlopedWidth ? kSlope : 0;
    const int middle = (lane.high + lane.low) / 2;
    for (const int y : {lane.high, lane.low}) {
        across(ink, from + slope, to - slope, y);
    }
    const int step = (middle - lane.high) / kSlope;
    for (int x = 0; x < slope; ++x) {
        for (const int at : {from + x, to - 1 - x}) {
            edge(ink, at, middle - (x + 1) * step, middle - x * step);
            edge(ink, at, middle + x * step, middle + (x + 1) * step);
        }
    }
    if (slope == 0)
        edge(ink, from, lane.high, lane.low);
    if (to - from >= m_digitWidth + 2 * kSlope)
        addText(namedText(value, lane.radix, lane.states), from, to, middle);
}

/// The text in the middle of the run, shortened when there is not enough space.
void WavePainter::addText(const QString& text, int from, int to, int middle)
{
    const int room = (to - from - 2 * kSlope) / m_digitWidth;
    const bool whole = text.size() <= room;
    if (!whole && room <= kFewestDigits)
        return;
    const QString shown = whole ? text : text.left(room - 1) + '~';
    const double baseline = middle + (m_font.ascent() - m_font.descent()) / 2;
    int x = from + (to - from - shown.size() * m_digitWidth) / 2;
    for (const QChar character : shown) {
        const int glyph = character.unicode() - kFirstCharacter;
        if (glyph > 0 && glyph < m_glyphOf.size()) {
            m_glyphs += m_glyphOf.at(glyph);
            m_glyphPlaces += QPointF(x, baseline);
        }
        x += m_digitWidth;
    }
}

void WavePainter::paint(QPainter& painter, const WaveColors& colors) const
{
    const QColor inks[Inks]
        = {colors.signal, colors.bus, colors.event, colors.unknown, colors.notLookedFor};
    const auto fill = [&](const QVector<QRect>& areas, const QColor& color) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRects(areas);
    };
    for (int ink = 0; ink < Inks; ++ink) {
        QColor tint = inks[ink];
        tint.setAlpha(kFillAlpha);
        fill(m_fills[ink], tint);
        fill(m_busy[ink], opaque(inks[ink], colors.base, kBusyAlpha));
        fill(m_lines[ink], inks[ink]);
    }
    QGlyphRun run;
    run.setRawFont(m_font);
    run.setGlyphIndexes(m_glyphs);
    run.setPositions(m_glyphPlaces);
    painter.setPen(colors.text);
    painter.drawGlyphRun({0, 0}, run);
}
