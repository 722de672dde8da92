// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_PAINTER_H
#define APPS_OXA_EDITOR_WAVE_WAVE_PAINTER_H

#include "analog_track.h"
#include "wave_colors.h"
#include "wave_layout.h"
#include "wave_scale.h"

#include <QFont>
#include <QLine>
#include <QRawFont>
#include <QVector>

class QPainter;

/// The font of values: fixed pitch, in the size of the program's font.
QFont valueFont();

/// What is drawn of a row. The references must outlive it.
struct WaveLane {
    const WaveRow& row;
    Radix radix;
    const QHash<QString, QString>& states; ///< the names of values, by binary digits
    int color = 0; ///< the user's, 0: the usual one
    WaveShape shape = WaveShape::Digits;
    const AnalogTrack* track = nullptr; ///< for a curve
};

/// Draws the rows of a waveform between two pixels. The time grows with the pixels, not with the
/// samples: the shapes of all rows are collected and drawn together.
class WavePainter {
public:
    WavePainter(const WaveScale& scale, qint64 samples, int left, int right, const QFont& font);

    void add(const WaveLane& lane, int top, int height);
    void paint(QPainter& painter, const WaveColors& colors) const;

private:
    // The colors for rows follow.
    enum Ink {
        Signal,
        Bus,
        Event,
        Unknown,
        NotLookedFor,
        RowColors,
        Inks = RowColors + kRowColors
    };

    struct Lane : WaveLane {
        int high; // y of a 1, or of a bus's upper edge
        int low;
        int ink;

        int yOf(double value) const; // of a curve
    };

    struct Label {
        QPoint place; // left, on the base line
        QString text;
    };

    void addDigits(const Lane& lane);
    void addCurve(const Lane& lane);
    void addLevel(const Lane& lane, int y, std::optional<QPoint>& last, std::pair<int, int> place);
    void addSwing(
        const Lane& lane, const AnalogTrack::Range& range, std::optional<QPoint>& last, int x);
    void addUnknown(const Lane& lane, int from, int to);
    void addRun(const Lane& lane, qint64 sample, int from, int to);
    void addBusRun(const Lane& lane, const WaveValue& value, int ink, int from, int to);
    void addBusy(const Lane& lane, int from, int to);
    void paintLabels(QPainter& painter) const;
    void addText(const QString& text, int from, int to, int middle);
    void across(int ink, int from, int to, int y) { m_lines[ink] += QRect(from, y, to - from, 1); }
    void edge(int ink, int x, int high, int low)
    {
        m_lines[ink] += QRect(x, high, 1, low - high + 1);
    }

    const WaveScale& m_scale;
    const qint64 m_samples;
    const int m_left;
    const int m_right;
    const QFont m_textFont;
    const QRawFont m_font;
    int m_digitWidth = 1;
    QVector<quint32> m_glyphOf; // of a character
    QVector<QRect> m_lines[Inks]; // rectangles are fast at every scale of the screen
    QVector<QRect> m_fills[Inks];
    QVector<QLine> m_slopes[Inks]; // of curves
    QVector<QRect> m_busy[Inks]; // several changes in a pixel
    std::vector<Label> m_labels;
};

#endif
