// SPDX-License-Identifier: Apache-2.0
// Writes the configuration with the largest tables that the format allows: 16 cores, each with 16
// dynamic expressions over 16 units.
#include "oxautils/config/standard_config.h"

#include <QCoreApplication>

namespace {

OXA::SignalItem signal(const QString& name)
{
    OXA::SignalItem item;
    item.name = name;
    return item;
}

QString expression(int number)
{
    static const char kOperators[] = "&|^";
    QString text = "M0";
    for (int unit = 1; unit < 16; ++unit)
        text += QString("%1%2M%3")
                    .arg(kOperators[(number + unit) % 3])
                    .arg(unit % 4 ? "" : "!")
                    .arg(unit);
    return text;
}

OXA::AoCore* largestCore(int index)
{
    auto* core = new OXA::AoCore(index);
    core->sampleClock = QString("clk%1").arg(index);
    core->expressionType = 1;
    core->captureSignals = core->signalList = {signal(QString("d%1").arg(index))};
    for (int i = 0; i < 16; ++i) {
        core->triggers.at(i)->signalList = {signal(QString("t%1_%2").arg(index).arg(i))};
        core->matchUnits.at(i)->enabled = true;
        core->matchUnits.at(i)->trigger = core->triggers.at(i);
        core->matchUnits.at(i)->value0 = "1";
        core->expressions += expression(i);
    }
    return core;
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QList<OXA::AoCore*> cores;
    for (int index = 0; index < 16; ++index)
        cores += largestCore(index);
    OXA::writeOXAConfigToXml(cores, application.arguments().value(1));
    qDeleteAll(cores);
    return 0;
}
