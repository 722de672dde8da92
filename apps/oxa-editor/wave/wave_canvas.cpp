// SPDX-License-Identifier: Apache-2.0
#include "wave_canvas.h"

#include "wave_model.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QTreeView>

namespace {

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
    m_scale.fit(samples(), width());
    showScale(true);
}

/// Draws at the scale, which is kept at the width of all samples when it `isFitted`.
void WaveCanvas::showScale(bool isFitted)
{
    m_fitted = isFitted;
    update();
    Q_EMIT scaleChanged();
}

void WaveCanvas::zoom(double factor, double x)
{
    m_scale.zoom(factor, x);
    showScale(false);
}

void WaveCanvas::moveTo(double place)
{
    if (place == m_scale.first())
        return;
    m_scale.moveTo(place);
    showScale(false);
}

void WaveCanvas::waveformChanged(qint64 samplesBefore)
{
    m_scale.setPlaces(m_model.waveform()->places);
    if (m_fitted || samplesBefore != samples())
        fit();
    else
        m_scale.resize(samples(), width());
    m_markers.limit(samples());
    showMarkers();
}

void WaveCanvas::showMarkers()
{
    update();
    Q_EMIT cursorMoved();
}

void WaveCanvas::setCursor(int which, qint64 sample)
{
    m_markers.set(which, samples() > 0 ? qBound(qint64(-1), sample, samples() - 1) : -1);
    showMarkers();
}

void WaveCanvas::addMarker()
{
    if (samples() == 0)
        return;
    const auto middle = qint64(m_scale.sampleAt(width() / 2.0));
    m_markers.add(cursor(0) >= 0 ? cursor(0) : qBound(qint64(0), middle, samples() - 1));
    showMarkers();
}

void WaveCanvas::removeMarkers()
{
    m_markers.removeMore();
    showMarkers();
}

void WaveCanvas::setRulerTimes(const std::optional<WaveTimes>& times)
{
    m_times = times;
    update();
}

void WaveCanvas::show(double first, double end)
{
    m_scale.show(first, end);
    showScale(false);
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
        moveTo(m_scale.placeOf(double(sample)) - m_scale.visible() / 2);
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
