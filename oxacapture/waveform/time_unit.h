// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_TIME_UNIT_H
#define OXACAPTURE_WAVEFORM_TIME_UNIT_H

#include <QByteArray>

#include <cmath>

namespace OXA_CAPTURE {

// Units of time are powers of ten of a second, and named by their exponents.
constexpr int kLeastTimeExponent = -15; ///< a dump's finest unit: fs
constexpr int kMostTimeExponent = 2; ///< its coarsest: 100 s

/// "10 ns" for -8, as dumps write it.
inline QByteArray timescaleText(int exponent)
{
    static constexpr const char* kUnits[] = {" fs", " ps", " ns", " us", " ms", " s"};
    const int above = exponent - kLeastTimeExponent;
    return QByteArray("1") + QByteArray(above % 3, '0') + kUnits[above / 3];
}

/// A time in seconds, exactly.
inline QByteArray secondsText(quint64 time, int exponent)
{
    QByteArray text = QByteArray::number(time);
    if (exponent >= 0)
        return time == 0 ? text : text + QByteArray(exponent, '0');
    text = text.rightJustified(1 - exponent, '0');
    return text.insert(text.size() + exponent, '.');
}

/// The length of so many periods of a clock of `hz`, in units of `exponent`.
inline qint64 periodsInUnits(double periods, double hz, int exponent)
{
    return std::llround(periods / hz * std::pow(10, -exponent));
}

/// The exponent of a unit of which the period of a clock of `hz` has at least a thousand.
inline int timeExponentFor(double hz)
{
    int exponent = kLeastTimeExponent;
    while (exponent < -3 && hz < std::pow(10, -exponent - 6))
        exponent += 3;
    return exponent;
}

}

#endif
