// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/csv_core.h"

#include "files/fail.h"
#include "oxacapture/files/capture_limits.h"
#include "oxacapture/waveform/bus_range.h"

namespace OXA_CAPTURE {

namespace {

constexpr int kDigitBits = 4;
constexpr char kHexadecimal[] = "0x";

// The value of a hexadecimal digit; -1 for another character.
int digitOf(char c)
{
    bool ok = false;
    const int digit = QByteArray(1, c).toInt(&ok, 16);
    return ok ? digit : -1;
}

void setUnknown(CsvCore& reading, int firstBit, int bits)
{
    for (int bit = 0; bit < bits; ++bit)
        setBit(reading.layout, reading.row, 0, firstBit + bit, Logic::Unknown);
}

bool takeBit(CsvCore& reading, int bit, const QByteArray& cell)
{
    if (cell != "0" && cell != "1" && cell != "x")
        return false;
    setBit(reading.layout, reading.row, 0, bit,
        cell == "x"       ? Logic::Unknown
            : cell == "1" ? Logic::One
                          : Logic::Zero);
    return true;
}

bool takeBus(CsvCore& reading, const CsvCore::Column& column, const QByteArray& cell)
{
    if (!cell.startsWith(kHexadecimal) || cell.size() != column.digits + 2)
        return false;
    for (int i = 0; i < column.digits; ++i) {
        const int firstBit = column.firstBit + kDigitBits * i;
        const int digit = digitOf(cell.at(2 + i));
        if (digit < 0 && cell.at(2 + i) != 'x')
            return false;
        if (digit < 0)
            setUnknown(reading, firstBit, kDigitBits);
        for (int bit = 0; digit >= 0 && bit < kDigitBits; ++bit)
            setBit(reading.layout, reading.row, 0, firstBit + bit,
                (digit >> (kDigitBits - 1 - bit)) & 1 ? Logic::One : Logic::Zero);
    }
    return true;
}

bool takeValue(CsvCore& reading, const CsvCore::Column& column, const QByteArray& cell)
{
    return column.digits > 0 ? takeBus(reading, column, cell)
                             : takeBit(reading, column.firstBit, cell);
}

QString valuesText(const CsvCore::Column& column)
{
    return column.digits > 0 ? QString("0x and %1 hexadecimal digits or x").arg(column.digits)
                             : QString("0, 1 or x");
}

}

int CsvCore::Column::bits() const { return digits > 0 ? digits * kDigitBits : 1; }

bool CsvCore::begin(const QStringList& names, const std::vector<QByteArray>& cells, QString* error)
{
    qint64 width = 0;
    qint64 characters = 0;
    QStringList bits; // the last columns, as far as they are single bits
    const auto addBits = [&] {
        core.items += groupedBits(bits);
        bits.clear();
    };
    for (size_t i = 0; i < cells.size(); ++i) {
        const QString& name = names.at(int(i));
        if (name.isEmpty() || cells[i].isEmpty())
            continue;
        const int digits = cells[i].startsWith(kHexadecimal) ? int(cells[i].size()) - 2 : 0;
        const Column column {i, digits, int(width)};
        width += column.bits();
        characters += name.size() * qint64(column.bits());
        if (width > kMostBits || characters > kMostCharacters)
            return OXA::fail(error, "has too many signals, or their names are too long");
        columns.push_back(column);
        if (digits == 0) {
            bits += name;
            continue;
        }
        addBits();
        core.items += busItem({name, column.bits() - 1, 0}, column.bits());
    }
    addBits();
    layout = SampleLayout({int(width)});
    row.resize(size_t(layout.rowWords()));
    return width > 0 || OXA::fail(error, QString("core %1 has no signals").arg(core.index));
}

bool CsvCore::takeValues(
    const QStringList& names, const std::vector<QByteArray>& cells, QString* error)
{
    size_t next = 0; // of the columns
    for (size_t i = 0; i < cells.size(); ++i) {
        const bool isOwn = next < columns.size() && columns[next].cell == i;
        if (names.at(int(i)).isEmpty() || (!isOwn && cells[i].isEmpty()))
            continue;
        if (!isOwn || !takeValue(*this, columns[next], cells[i]))
            return OXA::fail(error,
                QString("%1 cannot be \"%2\", only %3")
                    .arg(names.at(int(i)), QString(cells[i]),
                        isOwn ? valuesText(columns[next])
                              : QString("empty, as in the core's first row")));
        ++next;
    }
    return true;
}

}
