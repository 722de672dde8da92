// SPDX-License-Identifier: Apache-2.0
#include "sample_clocks.h"

#include "oxautils/config/names_file.h"

using namespace OXA_CAPTURE;

namespace {

constexpr double kSlowest = 1; // Hz, the least rate of a sigrok session
constexpr double kFastest = 1e12; // Hz

/// The core's index and the frequency of "0=100e6"; of "100e6", the index is that of `any`.
bool parse(const QString& text, int& index, double& hz)
{
    bool isIndex = true;
    bool isNumber = false;
    if (text.contains('='))
        index = text.section('=', 0, 0).toInt(&isIndex);
    hz = text.section('=', -1).toDouble(&isNumber);
    return isIndex && isNumber && hz >= kSlowest && hz <= kFastest;
}

}

void addClockOption(Command& command, QStringList& clocks)
{
    command
        .texts("--clock", clocks,
            "Frequency of the sample clock in Hz, for times in the file: 100e6, or 1=27.3e6 for"
            " core 1; may be repeated")
        .typeName("[CORE=]HZ");
}

ClockFrequencies sampleClocks(
    const QStringList& clocks, const QString& file, const QList<int>& cores, Messages& messages)
{
    OXA::KnownNames names;
    QString error;
    if (!OXA::readKnownNames(file, names, &error))
        messages.append(Message {{}, error});
    ClockFrequencies known;
    for (const int core : cores) {
        if (names.clocks.contains(core))
            known.insert(core, names.clocks.value(core));
    }
    for (const QString& text : clocks) {
        const int count = int(messages.size());
        int own = -1;
        double hz = 0;
        bool used = false;
        if (!parse(text, own, hz))
            messages.append(Message {"--clock " + text,
                QString("is not a frequency from %1 to %2 Hz, or a core's index with one, such as"
                        " 1=27.3e6")
                    .arg(QString::number(kSlowest), QString::number(kFastest))});
        for (const int core : cores) {
            if (text.contains('=') && core != own)
                continue;
            known.insert(core, hz);
            used = true;
        }
        if (!used && messages.size() == count)
            messages.append(Message {"--clock " + text, "no such core captures"});
    }
    for (const int core : cores) {
        if (!known.isEmpty() && !known.contains(core))
            messages.append(Message {QString("core %1").arg(core),
                QString("its clock is not known, but those of others are; add --clock %1=HZ")
                    .arg(core)});
    }
    return known;
}
