// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_WAVEFORMS_H
#define TESTS_SUPPORT_WAVEFORMS_H

#include <QByteArray>
#include <QStringList>

/// A dump of the one-bit signals `names` and of `clocks`, all in the scope "top". Each of `samples`
/// holds a character a signal: its value around one rising and the falling edge behind it, with
/// which the next values come. Clock k ticks at every (k + 1)-th sample only.
inline QByteArray vcdOf(
    const QStringList& names, const QStringList& samples, const QStringList& clocks = {"clk"})
{
    QByteArray vcd = "$scope module top $end\n";
    const auto declare = [&vcd](char kind, int number, const QString& name) {
        vcd += "$var wire 1 " + (kind + QByteArray::number(number)) + ' ' + name.toUtf8()
            + " $end\n";
    };
    for (int k = 0; k < clocks.size(); ++k)
        declare('c', k, clocks.at(k));
    for (int i = 0; i < names.size(); ++i)
        declare('s', i, names.at(i));
    vcd += "$upscope $end\n$enddefinitions $end\n";
    const auto tick = [&](int time, int sample, char level) {
        vcd += '#' + QByteArray::number(time) + '\n';
        for (int k = 0; k < clocks.size(); ++k)
            vcd += sample % (k + 1) ? QByteArray() : level + ('c' + QByteArray::number(k)) + '\n';
    };
    tick(0, 0, '0');
    for (int sample = 0; sample < samples.size(); ++sample) {
        for (int i = 0; i < names.size(); ++i)
            vcd += samples.at(sample).mid(i, 1).toUtf8() + 's' + QByteArray::number(i) + '\n';
        tick(10 * sample + 5, sample, '1');
        tick(10 * sample + 10, sample, '0');
    }
    return vcd;
}

#endif
