// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_CANVAS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_CANVAS_H

#include "wave_sheet.h"

#include <QWidget>

class QTreeView;
class WaveModel;

/// The samples of a waveform, drawn beside the rows of a tree at the same height.
class WaveCanvas : public QWidget {
    Q_OBJECT

public:
    /// Shows `rows`, the view of `model`; both must outlive this.
    WaveCanvas(QTreeView& rows, WaveModel& model, QWidget* parent = nullptr);

    const WaveScale& scale() const { return m_scale; }
    void fit();
    void zoom(double factor, double x);
    void moveTo(double place); ///< to the left edge

    /// Call it for another waveform: the visible range stays, unless everything was visible or the
    /// length changes.
    void waveformChanged(qint64 samplesBefore);

    const WaveMarkers& markers() const { return m_markers; }
    /// Samples of the cursors A (0), B (1) and further markers; -1 for one that is not set.
    qint64 cursor(int which) const { return m_markers.at(which); }
    void setCursor(int which, qint64 sample);
    /// Adds a marker at cursor A, or in the middle without it.
    void addMarker();
    void removeMarkers(); ///< but not the cursors

    /// Whether the mouse moves markers to an edge of the row that is near.
    void setSnaps(bool snaps) { m_snaps = snaps; }

    /// The ruler shows these; without, it counts samples.
    void setRulerTimes(const std::optional<WaveTimes>& times);

    /// The rows that are in sight and all else that is drawn.
    WaveSheet sheet() const;

    /// Zooms to these samples.
    void show(double first, double end);

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
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void showScale(bool isFitted);
    void showMarkers();
    int rulerHeight() const;
    qint64 samples() const;
    bool moveByKey(int key, int which);
    void selectRowAt(int y);
    int markerAt(const QPoint& place) const;
    qint64 sampleAt(const QPoint& place) const;
    void drawZoom(QPainter& painter) const;

    enum class Drag { None, Marker, Zoom };

    QTreeView& m_rows;
    WaveModel& m_model;
    WaveScale m_scale;
    bool m_isDimmed = false;
    bool m_fitted = true; // all samples are shown, also after a resize
    bool m_snaps = true;
    WaveMarkers m_markers;
    std::optional<WaveTimes> m_times; // of the ruler
    Drag m_drag = Drag::None;
    int m_dragged = 0; // marker
    int m_zoomFrom = 0; // pixels
    int m_zoomTo = 0;
    double m_panFrom = 0; // place under the mouse at the start of a pan
};

#endif
