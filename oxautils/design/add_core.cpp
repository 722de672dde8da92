// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/add_core.h"

#include "oxautils/design/choose_signals.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/shown_text.h"

#include <algorithm>

namespace OXA {

namespace {

constexpr int kLeastDepth = 16; // samples
constexpr int kLargestDepth = 1 << 30;

/// The full name of the signal of one bit called `name`; empty when there is none.
QString clockName(const DesignIndex& index, const QString& name, CoreNotes& notes)
{
    const auto fail = [&](const QString& why) {
        notes.errors += QString("the clock \"%1\" %2").arg(shownText(name), why);
        return QString();
    };
    const int whole = index.signal(name);
    const DesignBit bit = index.bit(name);
    if (bit.signal < 0 && whole >= 0)
        return fail(QString("has %1 bits; choose one, as in clocks[0]")
                        .arg(index.design().items.at(whole).width));
    if (bit.signal < 0)
        return fail(index.whyMissing(name));
    const DesignSignal& signal = index.design().items.at(bit.signal);
    return signal.isMemory() ? fail("is a memory") : signal.bitName(bit.position);
}

QList<SignalItem> itemsOf(const DesignIndex& index, const QStringList& words, const QString& clock,
    const QString& option, CoreNotes& notes)
{
    const ChosenSignals chosen = chooseSignals(index, words, clock);
    for (const QString& warning : chosen.warnings)
        notes.warnings += option + ": " + warning;
    for (const QString& error : chosen.errors)
        notes.errors += option + ' ' + error;
    return chosen.items;
}

template <typename Core>
void fillCommon(const DesignIndex& index, const CoreRequest& request, Core& core, CoreNotes& notes)
{
    core.sampleClock = clockName(index, request.clock, notes);
    core.trigType = request.fallingEdge ? 1 : 0;
    core.moduleName = index.design().top;
    core.captureAmount = request.samples;
    core.signalList = itemsOf(index, request.data, core.sampleClock, "data", notes);
}

/// Samples of the smallest memory for all windows.
int depthFor(const CoreRequest& request)
{
    const qint64 samples = qint64(request.samples) * request.windows;
    int depth = kLeastDepth;
    while (depth < samples && depth < kLargestDepth)
        depth *= 2;
    return depth;
}

void triggerAtOnce(AoCore& core)
{
    QStringList names;
    for (TriggerPort* port : core.availableTriggers()) {
        MatchUnit& unit = *core.matchUnit(port->index);
        unit.enabled = true;
        unit.trigger = port;
        unit.value0 = QString(port->singleSignals().size(), 'X');
        names += QString("M%1").arg(unit.index);
    }
    core.expressions = QStringList(names.isEmpty() ? QString("1'b1") : names.join(" && "));
}

}

bool fillCore(const DesignIndex& index, const CoreRequest& request, AoCore& core, CoreNotes& notes)
{
    fillCommon(index, request, core, notes);
    core.captureSignals = core.signalList;
    core.triggerPos = request.position;
    core.windowNum = request.windows;
    core.storageDepth = depthFor(request);
    if (request.triggers.size() > kPorts)
        notes.errors += QString("a core has %1 trigger ports").arg(kPorts);
    for (int i = 0; i < std::min(int(request.triggers.size()), kPorts); ++i)
        core.getTrigger(i)->signalList = itemsOf(index, request.triggers.at(i), core.sampleClock,
            QString("trigger port T%1").arg(i), notes);
    triggerAtOnce(core);
    return notes.errors.isEmpty();
}

bool fillCore(
    const DesignIndex& index, const CoreRequest& request, AOCore_Lite& core, CoreNotes& notes)
{
    fillCommon(index, request, core, notes);
    return notes.errors.isEmpty();
}

}
