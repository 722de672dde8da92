// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/standard_rules.h"

#include "oxautils/encoding/data_depth.h"

#include <algorithm>

namespace OXA {

namespace {

bool isPowerOfTwo(int n) { return n > 0 && (n & (n - 1)) == 0; }

bool windowCountIsGood(const AoCore& core) { return isPowerOfTwo(core.windowNum); }

bool amountIsGood(const AoCore& core)
{
    return core.captureAmount >= 1
        && (!windowCountIsGood(core) || core.captureAmount <= core.storageDepth / core.windowNum);
}

bool positionIsGood(const AoCore& core)
{
    return core.triggerPos >= 0 && core.triggerPos < core.captureAmount;
}

}

void findStorageDepth(const StandardCore& core, Findings& findings)
{
    if (!isPowerOfTwo(core.core.storageDepth))
        findings.add(core.place(),
            QString("its memory stores %1 samples, which is not a power of two")
                .arg(core.core.storageDepth));
}

void findWindowCount(const StandardCore& core, Findings& findings)
{
    if (!windowCountIsGood(core.core))
        findings.add(core.place(),
            QString("it takes %1 windows, which is not a power of two").arg(core.core.windowNum));
}

void findCaptureAmount(const StandardCore& core, Findings& findings)
{
    const AoCore& c = core.core;
    if (c.captureAmount < 1)
        findings.add(core.place(), QString("a window has %1 samples").arg(c.captureAmount));
    else if (!amountIsGood(c))
        findings.add(core.place(),
            QString("%1 windows of %2 samples do not fit into a memory of %3")
                .arg(QString::number(c.windowNum), QString::number(c.captureAmount),
                    QString::number(c.storageDepth)));
}

void findTriggerPosition(const StandardCore& core, Findings& findings)
{
    if (core.core.captureAmount >= 1 && !positionIsGood(core.core))
        findings.add(core.place(),
            QString("the trigger is at position %1 of a window of %2 samples")
                .arg(QString::number(core.core.triggerPos),
                    QString::number(core.core.captureAmount)));
}

void findShortWindow(const StandardCore& core, Findings& findings)
{
    if (!amountIsGood(core.core) || !positionIsGood(core.core))
        return;
    const int depth = dataDepth(core.core, core.device, core.depthFlag);
    if (depth < 0)
        findings.add(core.place(),
            QString("with %1 samples a window and the trigger at position %2 its data depth "
                    "register is %3")
                .arg(QString::number(core.core.captureAmount),
                    QString::number(core.core.triggerPos), QString::number(depth)));
}

void findNarrowRegisters(const StandardCore& core, Findings& findings)
{
    const int width = core.core.dataOutShiftWidth();
    const auto tooLarge
        = [width](int count) { return width < 31 && count >= 1 && ((count - 1) >> width) > 0; };
    const auto complain = [&](const char* what, int count) {
        if (tooLarge(count))
            findings.add(core.place(),
                QString("its registers have %1 bits, too few for %2 %3")
                    .arg(QString::number(width), QString::number(count), what));
    };
    complain("samples a window", core.core.captureAmount);
    complain("windows", core.core.windowNum);
}

void findTableMemory(const StandardCore& core, Findings& findings)
{
    const int memory = core.core.exImplementation;
    if (core.core.expressionType == DynamicExpressions
        && (memory < BlockSram || memory > ShadowSram))
        findings.add(core.place(),
            QString("its expression tables are in memory of kind %1, which does not exist")
                .arg(memory));
}

void findTooManyExpressions(const StandardCore& core, Findings& findings)
{
    const int count = core.core.expressions.size();
    if (count > kMostExpressions)
        findings.add(core.place(),
            QString("it has %1 trigger expressions, there are %2 at most")
                .arg(QString::number(count), QString::number(kMostExpressions)));
}

void findLiteAmount(const AnyCore& core, Findings& findings)
{
    if (core.lite && core.depth < 1)
        findings.add(core.place(), QString("it captures %1 samples").arg(core.depth));
}

}
