// SPDX-License-Identifier: Apache-2.0
#include "wave_canvas.h"

#include "wave_model.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTreeView>

namespace {

constexpr double kWheelZoom = 1.25; // for each notch
constexpr int kNotch = 120; // of a wheel's angle
constexpr double kWheelPan = 0.1; // of the visible width, for each notch
constexpr int kNear = 6; // pixels to an edge, or to a marker
constexpr int kLeastZoom = 4; // pixels that are dragged over
constexpr int kZoomTint = 60; // of 255

}

WaveCanvas::WaveCanvas(QTreeView& rows, WaveModel& model, QWidget* parent)
    : QWidget(parent)
    , m_rows(rows)
    , m_model(model)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Waveform"));
    rows.header()->setMinimumHeight(WaveSheet::rulerHeight(font()));
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
    m_markers.limit(samples());
    update();
    Q_EMIT cursorMoved();
}

void WaveCanvas::setCursor(int which, qint64 sample)
{
    m_markers.set(which, samples() > 0 ? qBound(qint64(-1), sample, samples() - 1) : -1);
    update();
    Q_EMIT cursorMoved();
}

void WaveCanvas::addMarker()
{
    if (samples() == 0)
        return;
    const auto middle = qint64(m_scale.sampleAt(width() / 2.0));
    m_markers.add(cursor(0) >= 0 ? cursor(0) : qBound(qint64(0), middle, samples() - 1));
    update();
    Q_EMIT cursorMoved();
}

void WaveCanvas::removeMarkers()
{
    m_markers.removeMore();
    update();
    Q_EMIT cursorMoved();
}

void WaveCanvas::setRulerTimes(const std::optional<WaveTimes>& times)
{
    m_times = times;
    update();
}

void WaveCanvas::show(double first, double end)
{
    m_scale.show(first, end);
    m_fitted = false;
    update();
    Q_EMIT scaleChanged();
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

/// The marker whose line or flag is there; -1 for none.
int WaveCanvas::markerAt(const QPoint& place) const
{
    for (int marker = 0; marker < m_markers.count(); ++marker) {
        const double x = m_scale.xOf(double(cursor(marker)));
        const int flag = fontMetrics().horizontalAdvance(WaveMarkers::name(marker)) + kNear;
        if (cursor(marker) >= 0 && place.x() > x - kNear && place.x() < x + flag)
            return marker;
    }
    return -1;
}

/// The sample there, or where the row there changes next to it.
qint64 WaveCanvas::sampleAt(const QPoint& place) const
{
    const auto sample = qint64(qBound(0.0, m_scale.sampleAt(place.x()), double(samples() - 1)));
    const WaveRow* row = m_model.row(m_rows.indexAt({0, place.y() - rulerHeight()}));
    if (!m_snaps || !row || place.y() < rulerHeight())
        return sample;
    const qint64 before = row->changes.previous(sample);
    const qint64 behind = row->changes.next(sample + 1);
    const auto distance
        = [&](qint64 edge) { return std::fabs(m_scale.xOf(double(edge)) - place.x()); };
    const qint64 edge = before < 0 || (behind < samples() && distance(behind) < distance(before))
        ? behind
        : before;
    return edge < samples() && distance(edge) <= kNear ? edge : sample;
}

void WaveCanvas::mousePressEvent(QMouseEvent* event)
{
    m_panFrom = m_scale.sampleAt(event->x());
    if (event->button() != Qt::LeftButton || samples() == 0)
        return;
    const bool onRuler = event->y() < rulerHeight();
    const bool zooms = event->modifiers() & Qt::ControlModifier;
    const int marker = onRuler ? markerAt(event->pos()) : -1;
    m_dragged = marker >= 0 ? marker : event->modifiers() & Qt::ShiftModifier ? 1 : 0;
    m_drag = zooms || (onRuler && marker < 0) ? Drag::Zoom : Drag::Marker;
    m_zoomFrom = m_zoomTo = event->x();
    if (m_drag == Drag::Marker && marker < 0) {
        setCursor(m_dragged, sampleAt(event->pos()));
        selectRowAt(event->y());
    }
}

void WaveCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::MiddleButton)
        moveTo(m_panFrom - event->x() / m_scale.pixels());
    else if (m_drag == Drag::Marker)
        setCursor(m_dragged, sampleAt(event->pos()));
    else if (m_drag == Drag::Zoom) {
        m_zoomTo = event->x();
        update();
    }
}

void WaveCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const auto [from, to] = std::minmax(m_zoomFrom, m_zoomTo);
    if (m_drag == Drag::Zoom && to - from >= kLeastZoom)
        show(m_scale.sampleAt(from), m_scale.sampleAt(to));
    else if (m_drag == Drag::Zoom)
        setCursor(m_dragged, sampleAt(event->pos()));
    m_drag = Drag::None;
    update();
}

bool WaveCanvas::moveByKey(int key, int which)
{
    const qint64 now = cursor(which);
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
    reveal(cursor(which));
    return true;
}

void WaveCanvas::keyPressEvent(QKeyEvent* event)
{
    const double page = m_scale.visible();
    const int key = event->key();
    if (key == Qt::Key_Escape && m_drag != Drag::None) {
        m_drag = Drag::None;
        update();
    } else if (key == Qt::Key_PageUp || key == Qt::Key_PageDown)
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

WaveSheet WaveCanvas::sheet() const
{
    WaveSheet sheet {m_model, m_scale, m_markers, m_times ? &*m_times : nullptr, size(), palette(),
        font(), {}, m_rows.currentIndex().siblingAtColumn(0), m_isDimmed};
    QModelIndex index = m_rows.indexAt({0, 0});
    for (; index.isValid(); index = m_rows.indexBelow(index)) {
        const QRect place = m_rows.visualRect(index);
        if (place.top() >= height() - rulerHeight())
            break;
        sheet.rows.push_back({index, place.top(), place.height()});
    }
    return sheet;
}

void WaveCanvas::drawZoom(QPainter& painter) const
{
    QColor tint = palette().color(QPalette::Highlight);
    painter.setPen(tint);
    tint.setAlpha(kZoomTint);
    painter.setBrush(tint);
    const auto [from, to] = std::minmax(m_zoomFrom, m_zoomTo);
    painter.drawRect(from, 0, to - from, height() - 1);
}

void WaveCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    sheet().draw(painter);
    if (m_drag == Drag::Zoom)
        drawZoom(painter);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}
