// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/name_sums.h"

#include "oxautils/encoding/crc32.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/verilog_file.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

namespace {

// Each name with its length before it, so that different lists have different bytes.
quint32 sumOf(const QStringList& names)
{
    constexpr int kByte = 8; // bits
    Crc32 crc;
    for (const QString& name : names) {
        const QByteArray bytes = name.toUtf8();
        crc.add(quint64(bytes.size()), 32);
        for (const char byte : bytes)
            crc.add(uchar(byte), kByte);
    }
    return crc.sum();
}

}

NameSums nameSums(const QString& clock, const QList<QStringList>& lists)
{
    NameSums sums {sumOf({clock})};
    for (const QStringList& names : lists)
        sums += sumOf(names);
    return sums;
}

NameSums nameSums(const AoCore& core)
{
    QList<QStringList> lists {core.dataSignals()};
    for (const TriggerPort* port : core.availableTriggers())
        lists += port->singleSignals();
    return nameSums(core.sampleClock, lists);
}

NameSums nameSums(const AOCore_Lite& core)
{
    return nameSums(core.sampleClock, {core.dataSignals()});
}

bool writeNameSums(const QString& workDir, const QList<NameSums>& cores)
{
    return writeVerilogFile(workDir, NAME_SUMS_FILE_NAME, [&cores](QTextStream& out) {
        out << "// CRC-32 of the names that the cores' bits have in the configuration\n";
        for (int position = 0; position < cores.size(); ++position) {
            QString digits; // the first checksum in the lowest bits
            for (const quint32 sum : cores.at(position))
                digits.prepend(hexText(sum));
            out << "`define OXA_NAMES_" << position << ' ' << 4 * digits.size() << "'h" << digits
                << '\n';
        }
    });
}

}
