// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_COLORS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_COLORS_H

#include <QColor>
#include <QString>

class QPalette;

constexpr int kRowColors = 6; ///< that a user may choose for a row

/// Colors for the background of a palette, light or dark, with enough contrast to it. Those that
/// are drawn side by side differ also for people who cannot tell red from green.
struct WaveColors {
    QColor signal;
    QColor bus;
    QColor event;
    QColor unknown;
    QColor notLookedFor;
    QColor rows[kRowColors]; ///< chosen by the user
    QColor text;
    QColor base; ///< behind samples that are in no window
    QColor window; ///< behind captured samples
    QColor border; ///< of windows
    QColor trigger;
    QColor grid;
    QColor cursors[2];
    QColor mark; ///< of further markers
};

WaveColors waveColors(const QPalette& palette);

/// Names of the colors for rows, for files: "blue". Number 0 is the usual color, "".
QString rowColorKey(int number);
QString rowColorName(int number); ///< the same for the user
int rowColorOf(const QString& key); ///< 0 for a name that is not known

/// `color` as it looks on `ground` with an alpha of `part`.
QColor opaque(const QColor& color, const QColor& ground, int part);

/// The quotient of the luminances, from 1 to 21, as the accessibility guidelines define it.
double contrast(const QColor& a, const QColor& b);

#endif
