// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/match_registers.h"

#include "oxautils/encoding/data_depth.h"
#include "oxautils/model/log_categories.h"

namespace OXA {

namespace {

struct CharacterCode {
    char character;
    bool m0, m1, m2;
};

// "X" and unknown characters clear all three bits.
constexpr CharacterCode kCharacters[] = {
    {'0', false, true,  false},
    {'1', true,  true,  false},
    {'R', false, false, true },
    {'F', true,  false, true },
    {'B', false, true,  true },
    {'N', true,  true,  true },
};

// Far more than any real core, but small enough for memory as text.
constexpr int kWidestRegister = 1 << 20;

constexpr char kHexDigits[] = "0123456789abcdef";

QString fitted(const QString& value, int width)
{
    return value.rightJustified(width, '0').left(width);
}

void setWhereOne(QBitArray& bits, const QString& value)
{
    for (int i = 0; i < bits.size(); ++i)
        bits.setBit(i, value.at(i) == '1');
}

void encodeCharacters(const QString& value, QBitArray& m0, QBitArray& m1, QBitArray& m2)
{
    for (int i = 0; i < value.size(); ++i) {
        for (const CharacterCode& code : kCharacters) {
            if (value.at(i) != code.character)
                continue;
            m0.setBit(i, code.m0);
            m1.setBit(i, code.m1);
            m2.setBit(i, code.m2);
        }
    }
}

// The format's rule: negative numbers keep their sign.
QString hex(int value)
{
    return value < 0 ? '-' + QString::number(-qint64(value), 16) : QString::number(value, 16);
}

// A file may contain any number; results wrap at 32 bits.
int minus(int a, int b) { return int(unsigned(a) - unsigned(b)); }

/// Writes the parameter lines of one core; registers are as wide as its data register.
class RegisterWriter {
public:
    RegisterWriter(QTextStream& out, int width)
        : m_out(out)
        , m_prefix(QString("%1'h").arg(width))
        , m_paddedWidth((width + 3) / 4 * 4)
    {
    }

    void writeNumber(const QString& name, int value) { write(name, hex(value)); }

    void writeBits(const QString& name, const QBitArray& bits)
    {
        write(name, strBit2Hex(BitToString(bits).rightJustified(m_paddedWidth, '0')));
    }

    // The format's rule: a fixed width, unlike that of the other registers.
    void writeNothing(const QString& name)
    {
        m_out << "parameter " << name << " = 16'h0000;" << Qt::endl;
    }

private:
    void write(const QString& name, const QString& digits)
    {
        m_out << "parameter " << name << " = " << m_prefix
              << digits.rightJustified(m_paddedWidth / 4, '0') << ';' << Qt::endl;
    }

    QTextStream& m_out;
    QString m_prefix;
    int m_paddedWidth;
};

void writeUnit(RegisterWriter& writer, MatchUnit* unit)
{
    const QString prefix = QString("MATCH%1_").arg(unit->index);
    if (!unit->enabled || !unit->trigger || unit->trigger->signalList.isEmpty()) {
        for (const char* name : {"REG_M0", "REG_M1", "REG_M2", "REG_CTRL", "TRIG_CNT"})
            writer.writeNothing(prefix + name + "_INIT");
        return;
    }
    QBitArray m0;
    QBitArray m1;
    QBitArray m2;
    bitForM(unit, m0, m1, m2);
    writer.writeBits(prefix + "REG_M0_INIT", m0);
    writer.writeBits(prefix + "REG_M1_INIT", m1);
    writer.writeBits(prefix + "REG_M2_INIT", m2);
    writer.writeBits(prefix + "REG_CTRL_INIT", bitForMatchCtrl(unit));
    if (unit->counterEnable)
        writer.writeNumber(prefix + "TRIG_CNT_INIT", minus(unit->counter, 1));
    else
        writer.writeNothing(prefix + "TRIG_CNT_INIT");
}

}

void bitForM(MatchUnit* unit, QBitArray& m0, QBitArray& m1, QBitArray& m2)
{
    const int width = unit && unit->trigger ? unit->trigger->singleSignals().size() : 0;
    m0 = m1 = m2 = QBitArray(width);
    if (width == 0)
        return;
    const QString value0 = fitted(unit->value0, width);
    switch (unit->matchFunc) {
    case MatchEqual:
    case MatchNotEqual:
        encodeCharacters(value0, m0, m1, m2);
        break;
    case MatchGreater:
    case MatchGreaterEqual:
        setWhereOne(m0, value0);
        break;
    case MatchLess:
    case MatchLessEqual:
        setWhereOne(m1, value0); // upper bounds are in M1
        break;
    case MatchInRange:
    case MatchNotInRange:
        setWhereOne(m0, value0);
        setWhereOne(m1, fitted(unit->value1, width));
        break;
    }
}

QBitArray bitForMatchCtrl(MatchUnit* unit)
{
    QBitArray control(4);
    if (!unit)
        return control;
    control.setBit(0, unit->counterEnable && unit->continuous);
    const int func = unit->matchFunc;
    for (int bit = 0; func >= 0 && func <= MatchNotInRange && bit < 3; ++bit)
        control.setBit(3 - bit, (func >> bit) & 1);
    return control;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link against this signature.
QString BitToString(QBitArray bits)
{
    QString text(bits.size(), '0');
    for (int i = 0; i < bits.size(); ++i) {
        if (bits.testBit(i))
            text[i] = '1';
    }
    return text;
}

QString strBit2Hex(const QString& bits)
{
    QString digits;
    digits.reserve(bits.size() / 4);
    for (int group = 0; group + 4 <= bits.size(); group += 4) {
        int value = 0;
        bool binary = true;
        for (int i = group; i < group + 4; ++i) {
            binary &= bits.at(i) == '0' || bits.at(i) == '1';
            value = 2 * value + (bits.at(i) == '1');
        }
        if (binary)
            digits += kHexDigits[value];
    }
    return digits;
}

void generateRegister(AoCore* core, QTextStream& out, QString device, int flag)
{
    if (!core)
        return;
    const int width = core->dataOutShiftWidth();
    if (width > kWidestRegister) {
        qCCritical(logEncoding).nospace() << "core " << core->index << ": its registers would have "
                                          << width << " bits, the limit is " << kWidestRegister;
        return;
    }
    RegisterWriter writer(out, width);
    writer.writeNumber("TRIG_LEVELS_INIT", core->expressions.size() - 1);
    writer.writeNumber("MAX_DATA_DEPTH_INIT", minus(core->captureAmount, 1));
    writer.writeNumber("DATA_DEPTH_INIT", dataDepth(*core, device, flag));
    writer.writeNumber("NUM_WINDOWS_INIT", minus(core->windowNum, 1));
    for (MatchUnit* unit : qAsConst(core->matchUnits))
        writeUnit(writer, unit);
}

}
