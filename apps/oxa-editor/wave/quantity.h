// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_QUANTITY_H
#define APPS_OXA_EDITOR_WAVE_QUANTITY_H

#include <QString>

/// Reads a frequency above 0: "50 MHz", "50M", "32.768k", "27e6". False for anything else.
bool readFrequency(const QString& text, double& hertz);

/// "12.5 MHz".
QString frequencyText(double hertz);

/// "500 ns", "-1.28 µs".
QString durationText(double seconds);

/// The same with as many decimals as tell times apart that differ by `step`: "1.2350 µs".
QString timeText(double seconds, double step);

#endif
