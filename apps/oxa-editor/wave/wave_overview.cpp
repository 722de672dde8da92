// SPDX-License-Identifier: Apache-2.0
#include "wave_overview.h"

#include "wave_canvas.h"
#include "wave_model.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QTreeView>

namespace {

constexpr int kSpace = 8; // pixels above and below a line of text
constexpr int kLeastFrame = 6; // pixels
constexpr int kShade = 110; // of 255, on what the canvas does not show

}

WaveOverview::WaveOverview(QTreeView& rows, WaveModel& model, WaveCanvas& canvas, QWidget* parent)
    : QWidget(parent)
    , m_rows(rows)
    , m_model(model)
    , m_canvas(canvas)
{
    setAccessibleName(tr("Overview"));
    setToolTip(tr("All samples of the chosen row; drag the frame to scroll"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    const auto repaint = QOverload<>::of(&QWidget::update);
    connect(&canvas, &WaveCanvas::scaleChanged, this, repaint);
    connect(&canvas, &WaveCanvas::cursorMoved, this, repaint);
    connect(&model, &WaveModel::layoutChanged, this, repaint);
    connect(rows.selectionModel(), &QItemSelectionModel::currentChanged, this, repaint);
}

QSize WaveOverview::sizeHint() const { return {0, fontMetrics().height() + kSpace}; }

void WaveOverview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Waveform& waveform = *m_model.waveform();
    const WaveColors colors = waveColors(palette());
    WaveScale all = m_canvas.scale();
    all.fit(waveform.samples, width());
    WaveSheet::drawGround(painter, waveform, all, rect(), colors);
    if (waveform.samples == 0)
        return;
    const QModelIndex current = m_rows.currentIndex();
    WavePainter row(all, waveform.samples, 0, width(), valueFont());
    if (m_model.row(current))
        row.add(m_model.lane(current), 0, height());
    row.paint(painter, colors);
    const auto line = [&](qint64 sample, const QColor& color) {
        if (sample >= 0) // else it is not set
            painter.fillRect(int(all.xOf(double(sample))), 0, 1, height(), color);
    };
    for (const WaveWindow& window : waveform.windows)
        line(window.trigger, colors.trigger);
    for (int marker = m_canvas.markers().count() - 1; marker >= 0; --marker)
        line(m_canvas.cursor(marker), marker < 2 ? colors.cursors[marker] : colors.mark);

    const WaveScale& shown = m_canvas.scale();
    const int from = int(all.xOfPlace(shown.first()));
    const int to = qMax(int(all.xOfPlace(shown.first() + shown.visible())), from + kLeastFrame);
    QColor shade = palette().color(QPalette::Window);
    shade.setAlpha(kShade);
    painter.fillRect(0, 0, from, height(), shade);
    painter.fillRect(to, 0, width() - to, height(), shade);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(from, 0, qMin(to, width()) - from - 1, height() - 1);
}

void WaveOverview::mousePressEvent(QMouseEvent* event) { mouseMoveEvent(event); }

void WaveOverview::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton))
        return;
    WaveScale all = m_canvas.scale();
    all.fit(m_model.waveform()->samples, width());
    m_canvas.moveTo(all.placeAt(event->x()) - m_canvas.scale().visible() / 2);
}

// It does the same as above the samples.
void WaveOverview::wheelEvent(QWheelEvent* event) { QCoreApplication::sendEvent(&m_canvas, event); }
