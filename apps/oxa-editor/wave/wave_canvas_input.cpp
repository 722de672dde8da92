// SPDX-License-Identifier: Apache-2.0
// What the mouse and the keys do in a WaveCanvas.
#include "wave_canvas.h"

#include "wave_model.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QTreeView>

namespace {

constexpr double kWheelZoom = 1.25; // for each notch
constexpr int kNotch = 120; // of a wheel's angle
constexpr double kWheelPan = 0.1; // of the visible width, for each notch
constexpr int kNear = 6; // pixels to an edge, or to a marker
constexpr int kLeastZoom = 4; // pixels that are dragged over

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
    m_panFrom = m_scale.placeAt(event->x());
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
