// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WINDOW_DRAWING_H
#define APPS_OXA_EDITOR_WINDOW_DRAWING_H

#include <QWidget>

/// Draws the windows in a core's memory, and the trigger position.
class WindowDrawing : public QWidget {
    Q_OBJECT

public:
    explicit WindowDrawing(QWidget* parent = nullptr);

    /// All in samples, except `windows`. Impossible numbers are drawn as far as possible.
    void setWindows(int depth, int amount, int windows, int triggerPos);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawWindow(QPainter& painter, const QRectF& area) const;
    void drawMemory(QPainter& painter, const QRectF& area) const;
    QString beforeText() const;
    QString afterText() const;
    QString memoryText() const;

    int m_depth = 0;
    int m_amount = 0;
    int m_windows = 0;
    int m_triggerPos = 0;
};

#endif
