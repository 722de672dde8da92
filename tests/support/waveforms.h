#ifndef TESTS_SUPPORT_WAVEFORMS_H
#define TESTS_SUPPORT_WAVEFORMS_H

#include <QByteArray>
#include <QStringList>

/// A dump with a clock "clk" and the one-bit signals `names`, all in the scope "top". Each of
/// `samples` holds a character a signal: its value around one rising edge. Signals change while the
/// clock is low, or, when `inverted`, high: then its falling edges take the same samples.
inline QByteArray vcdOf(const QStringList& names, const QStringList& samples, bool inverted = false)
{
    QByteArray vcd = "$scope module top $end\n$var wire 1 ! clk $end\n";
    for (int i = 0; i < names.size(); ++i)
        vcd += "$var wire 1 s" + QByteArray::number(i) + ' ' + names.at(i).toUtf8() + " $end\n";
    const char* idle = inverted ? "1!\n" : "0!\n";
    const char* active = inverted ? "0!\n" : "1!\n";
    vcd += "$upscope $end\n$enddefinitions $end\n#0\n";
    vcd += idle;
    for (int sample = 0; sample < samples.size(); ++sample) {
        for (int i = 0; i < names.size(); ++i)
            vcd += samples.at(sample).mid(i, 1).toUtf8() + 's' + QByteArray::number(i) + '\n';
        vcd += '#' + QByteArray::number(10 * sample + 5) + '\n' + active;
        vcd += '#' + QByteArray::number(10 * sample + 10) + '\n' + idle;
    }
    return vcd;
}

#endif
