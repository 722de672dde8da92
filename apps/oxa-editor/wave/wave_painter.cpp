// SPDX-License-Identifier: Apache-2.0
#include "wave_painter.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPainter>

using namespace OXA_CAPTURE;

namespace {

constexpr int kMargin = 3; // above and below a lane
constexpr int kSlope = 2; // half of a bus's change
constexpr int kSlopedWidth = 10; // of the narrowest run with slopes
constexpr int kFillAlpha = 50; // of 255
constexpr int kBusyAlpha = 160; // on the background outside of windows
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
    , m_right(int(std::ceil(std::fmin(scale.xOf(double(samples)), right))))
    , m_textFont(font)
    , m_font(QRawFont::fromFont(font))
{
    QString characters;
    for (int i = 0; i < kCharacters; ++i)
        characters += QChar(kFirstCharacter + i);
    m_glyphOf = m_font.glyphIndexesForString(characters);
    m_digitWidth = qMax(QFontMetrics(font).horizontalAdvance('0'), 1);
}

void WavePainter::add(const WaveLane& lane, int top, int height)
{
    const int usual = lane.row.isEvent ? Event : lane.row.isBus() ? Bus : Signal;
    const Lane place {lane, top + kMargin, top + height - 1 - kMargin,
        lane.color ? RowColors + lane.color - 1 : usual};
    if (lane.track && !lane.track->all().isEmpty())
        addCurve(place);
    else
        addDigits(place);
}

void WavePainter::addDigits(const Lane& lane)
{
    int busyFrom = -1;
    for (int x = m_left; x < m_right;) {
        const qint64 sample = qBound(qint64(0), qint64(m_scale.sampleAt(x)), m_samples - 1);
        const qint64 change = lane.row.changes.next(sample + 1);
        const int end = qMin(m_right, m_scale.pixelOf(double(change)));
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
    const int unknown = lane.row.isEvent ? NotLookedFor : Unknown;
    const int middle = (lane.high + lane.low) / 2;
    if (!lane.row.isTakenAt(sample))
        return across(NotLookedFor, from, to, middle);
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
        if (lane.row.isEvent)
            across(unknown, from, to, middle);
        else
            addUnknown(lane, from, to);
        break;
    }
}

void WavePainter::addUnknown(const Lane& lane, int from, int to)
{
    const int middle = (lane.high + lane.low) / 2;
    across(Unknown, from, to, middle);
    m_fills[Unknown] += QRect(QPoint(from, lane.high), QPoint(to - 1, lane.low));
    addText("x", from, to, middle);
}

void WavePainter::addBusRun(const Lane& lane, const WaveValue& value, int ink, int from, int to)
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

void WavePainter::addCurve(const Lane& lane)
{
    std::optional<QPoint> last; // where the curve was left
    for (int x = m_left; x < m_right;) {
        qint64 sample = qBound(qint64(0), qint64(m_scale.sampleAt(x)), m_samples - 1);
        qint64 change = lane.row.changes.next(sample + 1);
        if (m_scale.pixelOf(double(change)) <= x && change < m_samples) { // within this pixel
            sample = change;
            change = lane.row.changes.next(sample + 1);
        }
        const int end = qBound(x + 1, m_scale.pixelOf(double(change)), m_right);
        const bool isBusy = m_scale.pixelOf(double(change)) <= x; // several changes
        const auto next = qint64(std::ceil(m_scale.sampleAt(x + 1)));
        const AnalogTrack::Range range
            = lane.track->range(sample, isBusy ? qBound(sample + 1, next, m_samples) : sample + 1);
        if (range.isEmpty()) {
            addUnknown(lane, x, end);
            last.reset();
        } else if (isBusy) {
            addSwing(lane, range, last, x);
        } else {
            const bool bends = lane.shape == WaveShape::Lines && change < m_samples;
            const int bend = bends ? qBound(x, m_scale.pixelOf(double(change - 1)), end) : end;
            addLevel(lane, lane.yOf(range.least), last, {x, bend});
        }
        x = end;
    }
}

/// A value that stays from one pixel to another.
void WavePainter::addLevel(
    const Lane& lane, int y, std::optional<QPoint>& last, std::pair<int, int> place)
{
    const auto [from, to] = place;
    if (last && lane.shape == WaveShape::Lines)
        m_slopes[lane.ink] += QLine(*last, {from, y});
    else if (last)
        edge(lane.ink, from, qMin(y, last->y()), qMax(y, last->y()));
    across(lane.ink, from, to, y);
    last = QPoint(to, y);
}

/// Several values in one pixel.
void WavePainter::addSwing(
    const Lane& lane, const AnalogTrack::Range& range, std::optional<QPoint>& last, int x)
{
    const int high = lane.yOf(range.greatest);
    const int low = lane.yOf(range.least);
    const int before = last ? last->y() : low;
    edge(lane.ink, x, qMin(high, before), qMax(low, before));
    last = QPoint(x, low);
}

int WavePainter::Lane::yOf(double value) const
{
    const AnalogTrack::Range& all = track->all();
    const double part
        = all.greatest > all.least ? (value - all.least) / (all.greatest - all.least) : 0.5;
    return low - qRound(part * (low - high));
}

/// The text in the middle of the run, shortened when there is not enough space.
void WavePainter::addText(const QString& text, int from, int to, int middle)
{
    const int room = (to - from - 2 * kSlope) / m_digitWidth;
    const bool whole = text.size() <= room;
    if (!whole && room <= kFewestDigits)
        return;
    const QString shown = whole ? text : text.left(room - 1) + '~';
    const int baseline = int(middle + (m_font.ascent() - m_font.descent()) / 2);
    const int x = from + (to - from - shown.size() * m_digitWidth) / 2;
    m_labels.push_back({
        {x, baseline},
        shown
    });
}

void WavePainter::paintLabels(QPainter& painter) const
{
    if (painter.paintEngine()->type() == QPaintEngine::SVG) { // texts stay texts
        painter.setFont(m_textFont);
        for (const Label& label : m_labels)
            painter.drawText(label.place, label.text);
        return;
    }
    QVector<quint32> glyphs;
    QVector<QPointF> places;
    for (const Label& label : m_labels) {
        int x = label.place.x();
        for (const QChar character : label.text) {
            const int glyph = character.unicode() - kFirstCharacter;
            if (glyph > 0 && glyph < m_glyphOf.size()) {
                glyphs += m_glyphOf.at(glyph);
                places += QPointF(x, label.place.y());
            }
            x += m_digitWidth;
        }
    }
    QGlyphRun run;
    run.setRawFont(m_font);
    run.setGlyphIndexes(glyphs);
    run.setPositions(places);
    painter.drawGlyphRun({0, 0}, run);
}

void WavePainter::paint(QPainter& painter, const WaveColors& colors) const
{
    QColor inks[Inks]
        = {colors.signal, colors.bus, colors.event, colors.unknown, colors.notLookedFor};
    std::copy(std::begin(colors.rows), std::end(colors.rows), inks + RowColors);
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
        painter.setPen(inks[ink]);
        painter.drawLines(m_slopes[ink]);
    }
    painter.setPen(colors.text);
    paintLabels(painter);
}
