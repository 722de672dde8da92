#include "oxautils/generate/name_sums.h"

#include "oxautils/generate/file_names.h"
#include "oxautils/generate/verilog_file.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

namespace {

quint32 addByte(quint32 crc, uchar byte)
{
    constexpr quint32 kPolynomial = 0xedb88320; // as in zip files
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
        crc = (crc >> 1) ^ (crc & 1 ? kPolynomial : 0);
    return crc;
}

// Each name with its length in front, so that no two lists are the same bytes.
quint32 sumOf(const QStringList& names)
{
    quint32 crc = ~quint32(0);
    for (const QString& name : names) {
        const QByteArray bytes = name.toUtf8();
        for (int shift = 0; shift < 32; shift += 8)
            crc = addByte(crc, uchar(quint32(bytes.size()) >> shift));
        for (const char byte : bytes)
            crc = addByte(crc, uchar(byte));
    }
    return ~crc;
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
            QString digits; // the first sum in the lowest bits
            for (const quint32 sum : cores.at(position))
                digits.prepend(QString("%1").arg(sum, 8, 16, QChar('0')));
            out << "`define OXA_NAMES_" << position << ' ' << 4 * digits.size() << "'h" << digits
                << '\n';
        }
    });
}

}
