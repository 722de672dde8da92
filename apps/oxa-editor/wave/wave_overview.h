// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_OVERVIEW_H
#define APPS_OXA_EDITOR_WAVE_WAVE_OVERVIEW_H

#include <QWidget>

class QTreeView;
class WaveCanvas;
class WaveModel;

/// All samples of the current row in a strip, with the triggers, the markers and a frame around
/// what the canvas shows. The mouse moves the frame.
class WaveOverview : public QWidget {
    Q_OBJECT

public:
    /// Shows the current row of `rows`, the view of `model`; all must outlive this.
    WaveOverview(QTreeView& rows, WaveModel& model, WaveCanvas& canvas, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QTreeView& m_rows;
    WaveModel& m_model;
    WaveCanvas& m_canvas;
};

#endif
