// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_SHEET_H
#define APPS_OXA_EDITOR_WAVE_WAVE_SHEET_H

#include "wave_markers.h"
#include "wave_model.h"
#include "wave_times.h"

#include <QFontMetrics>
#include <QPalette>
#include <QSize>

/// Draws the samples of a waveform: a ruler with the flags of markers and triggers above their
/// numbers, and the rows below.
class WaveSheet {
public:
    struct Row {
        QModelIndex index;
        int top; ///< below the ruler
        int height;
    };

    const WaveModel& model;
    const WaveScale& scale;
    const WaveMarkers& markers;
    const WaveTimes* times = nullptr; ///< of the ruler; without, it counts samples
    QSize size {};
    QPalette palette {};
    QFont font {};
    std::vector<Row> rows {}; ///< those in sight
    QModelIndex current {}; ///< marked; may be invalid
    bool isDimmed = false; ///< samples that are not the newest

    static int rulerHeight(const QFont& font);

    void draw(QPainter& painter) const;

    /// The background of `area`, inside and outside of windows.
    static void drawGround(QPainter& painter, const Waveform& waveform, const WaveScale& scale,
        const QRect& area, const WaveColors& colors);

private:
    struct Flag {
        int x;
        QString text;
        QColor color;
        bool isNeeded; ///< else it is left out where there is no space
    };

    void drawRuler(QPainter& painter, const WaveColors& colors) const;
    void drawRows(QPainter& painter, const WaveColors& colors) const;
    void drawBorders(QPainter& painter, const WaveColors& colors, std::vector<Flag>& flags) const;
    void drawDashes(QPainter& painter, double x, const QColor& color) const;
    void drawMarkers(QPainter& painter, const WaveColors& colors, std::vector<Flag>& flags) const;
    void drawLine(
        QPainter& painter, qint64 sample, const Flag& flag, std::vector<Flag>& flags) const;
    void drawFlags(QPainter& painter, std::vector<Flag> flags) const;

    int ruler() const { return rulerHeight(font); }
    const Waveform& waveform() const { return *model.waveform(); }
};

#endif
