// SPDX-License-Identifier: Apache-2.0
#include "window_drawing.h"

#include <QPainter>

namespace {

constexpr int kMostWindows = 64; // that are drawn one by one

double share(double part, double whole) { return whole > 0 ? qBound(0.0, part / whole, 1.0) : 0; }

}

WindowDrawing::WindowDrawing(QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(tr("Drawing of the window"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void WindowDrawing::setWindows(int depth, int amount, int windows, int triggerPos)
{
    m_depth = depth;
    m_amount = amount;
    m_windows = windows;
    m_triggerPos = triggerPos;
    setAccessibleDescription(QString("%1, %2. %3").arg(beforeText(), afterText(), memoryText()));
    update();
}

QSize WindowDrawing::sizeHint() const
{
    const int line = fontMetrics().height();
    return {line * 20, line * 6};
}

QString WindowDrawing::beforeText() const { return tr("%1 before the trigger").arg(m_triggerPos); }

QString WindowDrawing::afterText() const
{
    return tr("%1 from the trigger on").arg(m_amount - m_triggerPos);
}

QString WindowDrawing::memoryText() const
{
    return tr("Memory: %1 × %2 of %3 samples")
        .arg(QString::number(m_windows), QString::number(m_amount), QString::number(m_depth));
}

void WindowDrawing::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = fontMetrics().height();
    drawWindow(painter, QRectF(1, line * 1.3, width() - 2, line));
    drawMemory(painter, QRectF(1, line * 3.6, width() - 2, line * 0.8));
}

/// One window: samples before the trigger, the trigger sample, samples after it.
void WindowDrawing::drawWindow(QPainter& painter, const QRectF& area) const
{
    const double trigger = area.left() + area.width() * share(m_triggerPos, m_amount);
    painter.fillRect(area, palette().base());
    painter.fillRect(
        QRectF(trigger, area.top(), area.right() - trigger, area.height()), palette().highlight());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawRect(area);
    painter.setPen(QPen(palette().color(QPalette::Text), 2));
    painter.drawLine(QPointF(trigger, area.top() - 2), QPointF(trigger, area.bottom() + 2));

    painter.setPen(palette().color(QPalette::WindowText));
    const double line = fontMetrics().height();
    const QRectF above(area.left(), 0, area.width(), line);
    painter.drawText(above, Qt::AlignLeft, beforeText());
    painter.drawText(above, Qt::AlignRight, afterText());
}

void WindowDrawing::drawMemory(QPainter& painter, const QRectF& area) const
{
    const qint64 used = qint64(m_amount) * m_windows;
    QRectF filled = area;
    filled.setWidth(area.width() * share(double(used), m_depth));
    painter.fillRect(area, palette().base());
    painter.fillRect(filled, palette().midlight());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawRect(area);
    for (int window = 1; m_windows <= kMostWindows && window < m_windows; ++window) {
        const double x = filled.left() + filled.width() * window / m_windows;
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    painter.setPen(palette().color(QPalette::WindowText));
    const QRectF below(area.left(), area.bottom() + 2, area.width(), fontMetrics().height());
    painter.drawText(below, Qt::AlignLeft, memoryText());
}
