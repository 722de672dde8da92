// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_PAINTER_H
#define APPS_OXA_EDITOR_WAVE_WAVE_PAINTER_H

#include "wave_scale.h"
#include "waveform.h"

#include <QColor>
#include <QFont>
#include <QRawFont>
#include <QVector>

class QPainter;
class QPalette;

/// Colors that can be distinguished on the palette's background, light or dark.
struct WaveColors {
    QColor signal;
    QColor bus;
    QColor event;
    QColor unknown;
    QColor notLookedFor;
    QColor text;
    QColor base; ///< behind samples that are in no window
    QColor window; ///< behind captured samples
    QColor border; ///< of windows
    QColor trigger;
    QColor grid;
    QColor cursors[2];
};

WaveColors waveColors(const QPalette& palette);

/// The font of values: fixed pitch, in the size of the program's font.
QFont valueFont();

/// Draws the rows of a waveform between two pixels. The time grows with the pixels, not with the
/// samples: the shapes of all rows are collected and drawn together.
class WavePainter {
public:
    WavePainter(const WaveScale& scale, qint64 samples, int left, int right, const QFont& font);

    /// With the names of values in `states`, by binary digits.
    void add(const WaveRow& row, Radix radix, const QHash<QString, QString>& states, int top,
        int height);
    void paint(QPainter& painter, const WaveColors& colors) const;

private:
    enum Ink { Signal, Bus, Event, Unknown, NotLookedFor, Inks };

    struct Lane {
        const WaveRow& row;
        Radix radix;
        const QHash<QString, QString>& states;
        int high; // y of a 1, or of a bus's upper edge
        int low;
        Ink ink;
    };

    void addRun(const Lane& lane, qint64 sample, int from, int to);
    void addBusRun(const Lane& lane, const WaveValue& value, Ink ink, int from, int to);
    void addBusy(const Lane& lane, int from, int to);
    void addText(const QString& text, int from, int to, int middle);
    void across(Ink ink, int from, int to, int y) { m_lines[ink] += QRect(from, y, to - from, 1); }
    void edge(Ink ink, int x, int high, int low)
    {
        m_lines[ink] += QRect(x, high, 1, low - high + 1);
    }

    const WaveScale& m_scale;
    const qint64 m_samples;
    const int m_left;
    const int m_right;
    const QRawFont m_font;
    int m_digitWidth = 1;
    QVector<quint32> m_glyphOf; // of a character
    QVector<QRect> m_lines[Inks]; // rectangles are fast at every scale of the screen
    QVector<QRect> m_fills[Inks];
    QVector<QRect> m_busy[Inks]; // several changes in a pixel
    QVector<quint32> m_glyphs;
    QVector<QPointF> m_glyphPlaces;
};

#endif
