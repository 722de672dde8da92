// A function, a width and two values: registers are as wide as the port, and every text encodes.
#include "fuzz_support.h"

#include "oxautils/encoding/match_registers.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 4)
        return 0;
    OXA::AoCore core(0);
    OXA::TriggerPort* port = core.triggers.at(0);
    for (int i = 0; i < data[0]; ++i)
        port->signalList += OXA::SignalItem();
    OXA::MatchUnit* unit = core.matchUnits.at(data[1] % 16);
    unit->enabled = true;
    unit->trigger = port;
    unit->matchFunc = OXA::MatchFunc(int8_t(data[2]));
    unit->counterEnable = data[3] & 1;
    unit->continuous = data[3] & 2;
    unit->counter = int8_t(data[3]);
    const QList<QByteArray> values
        = QByteArray(reinterpret_cast<const char*>(data + 4), int(size - 4)).split('\n');
    unit->value0 = QString::fromUtf8(values.value(0));
    unit->value1 = QString::fromUtf8(values.value(1));

    QBitArray m0;
    QBitArray m1;
    QBitArray m2;
    OXA::bitForM(unit, m0, m1, m2);
    require(m0.size() == data[0] && m1.size() == data[0] && m2.size() == data[0], "port width");
    require(OXA::bitForMatchCtrl(unit).size() == 4, "control width");
    require(OXA::strBit2Hex(OXA::BitToString(m0)).size() == data[0] / 4, "a digit four bits");
    require(OXA::strBit2Hex(unit->value0).size() <= unit->value0.size() / 4, "never more digits");
    QString text;
    QTextStream out(&text);
    OXA::generateRegister(&core, out, unit->value1, data[3] & 4);
    require(text.count('\n') == 4 + 16 * 5, "all the lines");
    return 0;
}
