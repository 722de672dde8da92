// SPDX-License-Identifier: Apache-2.0
#include "quantity.h"

#include <QRegularExpression>

#include <cmath>

namespace {

struct Prefix {
    const char* text;
    double factor;
};

constexpr Prefix kPrefixes[] = {
    {"G",        1e9  },
    {"M",        1e6  },
    {"k",        1e3  },
    {"",         1    },
    {"m",        1e-3 },
    {"\xc2\xb5", 1e-6 },
    {"n",        1e-9 },
    {"p",        1e-12},
};

constexpr int kDigits = 6; // shown

const Prefix& prefixOf(double value)
{
    for (const Prefix& prefix : kPrefixes) {
        // A value just below a prefix is rounded up to it, and uses it.
        if (std::fabs(value) * (1 + 1e-9) >= prefix.factor)
            return prefix;
    }
    return *(std::end(kPrefixes) - 1);
}

QString quantityText(double value, const char* unit)
{
    if (value == 0)
        return QString("0 %1").arg(unit);
    const Prefix& prefix = prefixOf(value);
    return QString("%1 %2%3").arg(
        QString::number(value / prefix.factor, 'g', kDigits), QString::fromUtf8(prefix.text), unit);
}

}

bool readFrequency(const QString& text, double& hertz)
{
    static const QRegularExpression pattern(
        R"(^\s*([0-9.]+(?:e[+-]?[0-9]+)?)\s*([kmg]?)(?:hz)?\s*$)",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(text);
    bool ok = false;
    hertz = match.captured(1).toDouble(&ok);
    // "m" means mega: sample clocks are not in millihertz.
    const QString prefix = match.captured(2).toLower();
    hertz *= prefix == "g" ? 1e9 : prefix == "m" ? 1e6 : prefix == "k" ? 1e3 : 1;
    return ok && hertz > 0 && std::isfinite(hertz);
}

QString frequencyText(double hertz) { return quantityText(hertz, "Hz"); }

QString durationText(double seconds) { return quantityText(seconds, "s"); }

QString timeText(double seconds, double step)
{
    if (std::fabs(seconds) < step / 2)
        return "0 s";
    const Prefix& prefix = prefixOf(seconds);
    const int decimals = qMax(0, int(std::ceil(std::log10(prefix.factor / step) - 1e-6)));
    return QString("%1 %2s").arg(
        QString::number(seconds / prefix.factor, 'f', decimals), QString::fromUtf8(prefix.text));
}
