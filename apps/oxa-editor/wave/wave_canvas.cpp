// SPDX-License-Identifier: Apache-2.0
#include "wave_canvas.h"

#include "wave_model.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTreeView>

#include <algorithm>

using OXA_CAPTURE::kNoSample;

namespace {

constexpr double kWheelZoom = 1.25; // for each notch
constexpr int kNotch = 120; // of a wheel's angle
constexpr double kWheelPan = 0.1; // of the visible width, for each notch
constexpr int kRowTint = 40; // of 255, on the current row and the cursors' samples
constexpr int kDimming = 150; // of 255, the background's part on dimmed samples
constexpr int kDash = 4; // dash and gap of a border
constexpr int kTick = 4; // height
constexpr int kTickRoom = 12; // characters between two numbers of the ruler

/// The smallest of 1, 2, 5, 10, 20, 50... that is at least `wanted`.
qint64 roundStep(double wanted)
{
    qint64 decade = 1;
    while (double(decade) * 10 <= wanted)
        decade *= 10;
    for (const int factor : {1, 2, 5}) {
        if (double(decade * factor) >= wanted)
            return decade * factor;
    }
    return decade * 10;
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

WaveCanvas::WaveCanvas(QTreeView& rows, WaveModel& model, QWidget* parent)
    : QWidget(parent)
    , m_rows(rows)
    , m_model(model)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Waveform"));
    const auto repaint = QOverload<>::of(&QWidget::update);
    connect(rows.verticalScrollBar(), &QScrollBar::valueChanged, this, repaint);
    connect(rows.header(), &QHeaderView::geometriesChanged, this, repaint);
    connect(&rows, &QTreeView::expanded, this, repaint);
    connect(&rows, &QTreeView::collapsed, this, repaint);
    connect(&model, &QAbstractItemModel::dataChanged, this, repaint);
    connect(&model, &QAbstractItemModel::layoutChanged, this, repaint);
    connect(rows.selectionModel(), &QItemSelectionModel::currentChanged, this, repaint);
}

QSize WaveCanvas::sizeHint() const { return {fontMetrics().averageCharWidth() * 80, 0}; }

int WaveCanvas::rulerHeight() const { return m_rows.header()->height(); }

qint64 WaveCanvas::samples() const { return m_model.waveform()->samples; }

void WaveCanvas::fit()
{
    m_fitted = true;
    m_scale.fit(samples(), width());
    update();
    Q_EMIT scaleChanged();
}

void WaveCanvas::zoom(double factor, double x)
{
    m_scale.zoom(factor, x);
    m_fitted = false;
    update();
    Q_EMIT scaleChanged();
}

void WaveCanvas::moveTo(double firstSample)
{
    if (firstSample == m_scale.first())
        return;
    m_scale.moveTo(firstSample);
    m_fitted = false;
    update();
    Q_EMIT scaleChanged();
}

void WaveCanvas::waveformChanged(qint64 samplesBefore)
{
    if (m_fitted || samplesBefore != samples())
        fit();
    for (const int which : {0, 1}) {
        if (m_cursors[which] >= samples())
            setCursor(which, -1);
    }
    update();
}

void WaveCanvas::setCursor(int which, qint64 sample)
{
    m_cursors[which] = samples() > 0 ? qBound(qint64(-1), sample, samples() - 1) : -1;
    update();
    Q_EMIT cursorMoved();
}

void WaveCanvas::setDimmed(bool dimmed)
{
    m_isDimmed = dimmed;
    update();
}

void WaveCanvas::reveal(qint64 sample)
{
    const double x = m_scale.xOf(double(sample));
    if (x < 0 || m_scale.xOf(double(sample) + 1) > width())
        moveTo(double(sample) - m_scale.visible() / 2);
}

void WaveCanvas::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_fitted)
        m_scale.fit(samples(), width());
    else
        m_scale.resize(samples(), width());
    Q_EMIT scaleChanged();
}

void WaveCanvas::wheelEvent(QWheelEvent* event)
{
    const QPoint angle = event->angleDelta();
    const double notches = double(angle.y() ? angle.y() : angle.x()) / kNotch;
    QScrollBar* rows = m_rows.verticalScrollBar();
    if (event->modifiers() & Qt::ControlModifier)
        zoom(std::pow(kWheelZoom, notches), event->position().x());
    else if (angle.x() != 0 || event->modifiers() & Qt::ShiftModifier
        || rows->maximum() == rows->minimum())
        moveTo(m_scale.first() - notches * kWheelPan * m_scale.visible());
    else
        rows->setValue(rows->value() - int(notches * 3 * rows->singleStep()));
    event->accept();
}

void WaveCanvas::selectRowAt(int y)
{
    const QModelIndex index = m_rows.indexAt({0, y - rulerHeight()});
    if (index.isValid())
        m_rows.setCurrentIndex(index);
}

void WaveCanvas::mousePressEvent(QMouseEvent* event)
{
    m_panFrom = m_scale.sampleAt(event->x());
    if (event->button() != Qt::LeftButton)
        return;
    m_dragged = event->modifiers() & Qt::ShiftModifier ? 1 : 0;
    setCursor(m_dragged, qMax(qint64(0), qint64(m_panFrom)));
    selectRowAt(event->y());
}

void WaveCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        setCursor(m_dragged, qMax(qint64(0), qint64(m_scale.sampleAt(event->x()))));
    else if (event->buttons() & Qt::MiddleButton)
        moveTo(m_panFrom - event->x() / m_scale.pixels());
}

bool WaveCanvas::moveByKey(int key, int which)
{
    const qint64 now = m_cursors[which];
    const qint64 start = now < 0 ? qint64(m_scale.sampleAt(width() / 2.0)) : now;
    switch (key) {
    case Qt::Key_Left:
        setCursor(which, qMax(qint64(0), now < 0 ? start : now - 1));
        break;
    case Qt::Key_Right:
        setCursor(which, now < 0 ? start : now + 1);
        break;
    case Qt::Key_Home:
        setCursor(which, 0);
        break;
    case Qt::Key_End:
        setCursor(which, samples() - 1);
        break;
    default:
        return false;
    }
    reveal(m_cursors[which]);
    return true;
}

void WaveCanvas::keyPressEvent(QKeyEvent* event)
{
    const double page = m_scale.visible();
    const int key = event->key();
    if (key == Qt::Key_PageUp || key == Qt::Key_PageDown)
        moveTo(m_scale.first() + (key == Qt::Key_PageUp ? -page : page));
    else if (key == Qt::Key_Up || key == Qt::Key_Down) {
        const QModelIndex now = m_rows.currentIndex();
        const QModelIndex next
            = key == Qt::Key_Up ? m_rows.indexAbove(now) : m_rows.indexBelow(now);
        if (next.isValid())
            m_rows.setCurrentIndex(next);
    } else if (!moveByKey(key, event->modifiers() & Qt::ShiftModifier ? 1 : 0))
        QWidget::keyPressEvent(event);
}

void WaveCanvas::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void WaveCanvas::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

void WaveCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const WaveColors colors = waveColors(palette());
    drawGround(painter, colors);
    if (samples() > 0) {
        drawRuler(painter, colors);
        painter.setClipRect(0, rulerHeight(), width(), height() - rulerHeight());
        drawRows(painter, colors);
        painter.setClipping(false);
        drawBorders(painter, colors);
        if (m_isDimmed) {
            QColor veil = colors.base;
            veil.setAlpha(kDimming);
            painter.fillRect(0, rulerHeight(), width(), height() - rulerHeight(), veil);
        }
        drawCursors(painter, colors);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

/// The background of the rows, inside and outside of windows, each pixel once.
void WaveCanvas::drawGround(QPainter& painter, const WaveColors& colors) const
{
    const std::vector<WaveWindow>& windows = m_model.waveform()->windows;
    const auto fill = [&](int from, int to, const QColor& color) {
        painter.fillRect(from, rulerHeight(), to - from, height() - rulerHeight(), color);
    };
    painter.fillRect(
        0, 0, width(), rulerHeight(), samples() > 0 ? palette().button() : palette().base());
    for (int x = 0; x < width();) {
        const auto window = windowsFrom(windows, m_scale.sampleAt(x));
        if (window == windows.end())
            return fill(x, width(), colors.base);
        const int from = int(qBound(double(x), m_scale.xOf(double(window->first)), 1.0 * width()));
        const double end = m_scale.xOf(double(window->first + window->samples));
        const int to = int(qBound(from + 1.0, end, width() + 1.0));
        fill(x, from, colors.base);
        fill(from, to, colors.window);
        x = to;
    }
}

void WaveCanvas::drawRuler(QPainter& painter, const WaveColors& colors) const
{
    const double room = kTickRoom * fontMetrics().averageCharWidth() / m_scale.pixels();
    const qint64 step = roundStep(qMax(room, 1.0));
    qint64 tick = qint64(m_scale.first()) / step * step;
    const QColor ink = palette().color(QPalette::ButtonText);
    painter.setPen(ink);
    for (; tick < samples() && m_scale.xOf(double(tick)) < width(); tick += step) {
        const int x = int(m_scale.xOf(double(tick)));
        painter.fillRect(x, rulerHeight(), 1, height() - rulerHeight(), colors.grid);
        painter.fillRect(x, rulerHeight() - kTick, 1, kTick, ink);
        painter.drawText(x + 2, fontMetrics().ascent() + 1, QString::number(tick));
    }
}

void WaveCanvas::drawRows(QPainter& painter, const WaveColors& colors) const
{
    WavePainter rows(m_scale, samples(), 0, width(), valueFont());
    QModelIndex index = m_rows.indexAt({0, 0});
    for (; index.isValid(); index = m_rows.indexBelow(index)) {
        const QRect place = m_rows.visualRect(index);
        const int top = rulerHeight() + place.top();
        if (top >= height())
            break;
        if (index.row() == m_rows.currentIndex().row()
            && index.parent() == m_rows.currentIndex().parent()) {
            QColor tint = palette().color(QPalette::Highlight);
            tint.setAlpha(kRowTint);
            painter.fillRect(0, top, width(), place.height(), tint);
        }
        if (m_model.row(index))
            rows.add(m_model.lane(index), top, place.height());
        else
            painter.fillRect(0, top + place.height() / 2, width(), 1, colors.grid);
    }
    rows.paint(painter, colors);
}

void WaveCanvas::drawBorders(QPainter& painter, const WaveColors& colors) const
{
    const std::vector<WaveWindow>& windows = m_model.waveform()->windows;
    for (int x = 0; x < width();) {
        const auto window = windowsFrom(windows, m_scale.sampleAt(x));
        if (window == windows.end() || m_scale.xOf(double(window->first)) >= width())
            return;
        const double end = m_scale.xOf(double(window->first + window->samples));
        for (const double border : {m_scale.xOf(double(window->first)), end})
            drawDashes(painter, border, colors.border);
        if (window->trigger != kNoSample)
            drawFlag(painter, tr("T", "trigger"), window->trigger, colors.trigger);
        x = int(qBound(x + 1.0, end, 1.0 * width()));
    }
}

void WaveCanvas::drawDashes(QPainter& painter, double x, const QColor& color) const
{
    if (x < 0 || x >= width())
        return;
    for (int y = rulerHeight(); y < height(); y += 2 * kDash)
        painter.fillRect(int(x), y, 1, kDash, color);
}

void WaveCanvas::drawCursors(QPainter& painter, const WaveColors& colors) const
{
    for (const int which : {0, 1}) {
        if (m_cursors[which] >= 0)
            drawFlag(painter, which == 0 ? "A" : "B", m_cursors[which], colors.cursors[which]);
    }
}

/// A line at a sample, with a letter in the ruler.
void WaveCanvas::drawFlag(
    QPainter& painter, const QString& text, qint64 sample, const QColor& color) const
{
    const double x = m_scale.xOf(double(sample));
    if (x < -1 || x > width())
        return;
    QColor tint = color;
    tint.setAlpha(kRowTint);
    painter.fillRect(QRectF(x, rulerHeight(), m_scale.pixels(), height()), tint);
    painter.fillRect(int(x), 0, 1, height(), color);
    const QRect flag(int(x), 0, fontMetrics().horizontalAdvance(text) + 6, rulerHeight() - 4);
    painter.fillRect(flag, color);
    painter.setPen(palette().color(QPalette::Base));
    painter.drawText(flag, Qt::AlignCenter, text);
}
