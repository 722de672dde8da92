#ifndef APPS_OXA_EDITOR_WAVE_WAVE_CANVAS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_CANVAS_H

#include "wave_painter.h"

#include <QWidget>

class QTreeView;
class WaveModel;

/// The samples of a waveform, drawn beside the rows of a tree and at their height: a ruler, the
/// windows and their triggers, two cursors.
class WaveCanvas : public QWidget {
    Q_OBJECT

public:
    /// Looks at `rows`, which shows `model`; both have to stay.
    WaveCanvas(QTreeView& rows, WaveModel& model, QWidget* parent = nullptr);

    const WaveScale& scale() const { return m_scale; }
    void fit();
    void zoom(double factor, double x);
    void moveTo(double firstSample);

    /// Another waveform is shown: what is seen stays, unless all was seen, or the length is
    /// another.
    void waveformChanged(qint64 samplesBefore);

    /// Samples of the two cursors; -1 for one that is not set.
    qint64 cursor(int which) const { return m_cursors[which]; }
    void setCursor(int which, qint64 sample);

    /// Brings a sample into sight.
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
    bool m_fitted = true; // and stays so when the size changes
    qint64 m_cursors[2] = {-1, -1};
    int m_dragged = 0; // cursor that follows the mouse
    double m_panFrom = 0; // sample that the mouse took hold of
};

#endif
