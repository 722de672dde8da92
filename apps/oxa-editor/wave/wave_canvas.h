// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_CANVAS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_CANVAS_H

#include "wave_painter.h"

#include <QWidget>

class QTreeView;
class WaveModel;

/// The samples of a waveform, drawn beside the rows of a tree at the same height: a ruler, the
/// windows and their triggers, two cursors.
class WaveCanvas : public QWidget {
    Q_OBJECT

public:
    /// Shows `rows`, the view of `model`; both must outlive this.
    WaveCanvas(QTreeView& rows, WaveModel& model, QWidget* parent = nullptr);

    const WaveScale& scale() const { return m_scale; }
    void fit();
    void zoom(double factor, double x);
    void moveTo(double firstSample);

    /// Call it for another waveform: the visible range stays, unless everything was visible or the
    /// length changes.
    void waveformChanged(qint64 samplesBefore);

    /// Samples of the two cursors; -1 for one that is not set.
    qint64 cursor(int which) const { return m_cursors[which]; }
    void setCursor(int which, qint64 sample);

    void setDimmed(bool dimmed);

    /// Scrolls to a sample.
    void reveal(qint64 sample);

    QSize sizeHint() const override;

Q_SIGNALS:
    void scaleChanged();
    void cursorMoved();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    int rulerHeight() const;
    qint64 samples() const;
    bool moveByKey(int key, int which);
    void selectRowAt(int y);
    void drawGround(QPainter& painter, const WaveColors& colors) const;
    void drawRuler(QPainter& painter, const WaveColors& colors) const;
    void drawRows(QPainter& painter, const WaveColors& colors) const;
    void drawBorders(QPainter& painter, const WaveColors& colors) const;
    void drawDashes(QPainter& painter, double x, const QColor& color) const;
    void drawCursors(QPainter& painter, const WaveColors& colors) const;
    void drawFlag(QPainter& painter, const QString& text, qint64 sample, const QColor& color) const;

    QTreeView& m_rows;
    WaveModel& m_model;
    WaveScale m_scale;
    bool m_isDimmed = false;
    bool m_fitted = true; // all samples are shown, also after a resize
    qint64 m_cursors[2] = {-1, -1};
    int m_dragged = 0; // cursor that is dragged
    double m_panFrom = 0; // sample at the start of a pan
};

#endif
