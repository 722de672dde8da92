// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/part_rules.h"

#include <algorithm>

#include <dev/device_facts.h>

namespace OXA {

namespace {

/// The first core for which `test` of a resource is true; -1 when there is none.
template <typename Test> int firstCore(const AllCores& configuration, Test test)
{
    const auto at = std::find_if(configuration.amounts.begin(), configuration.amounts.end(), test);
    return at == configuration.amounts.end() ? -1 : int(at - configuration.amounts.begin());
}

const OXA_TOOL::AnalyzerResource& resourceOf(qint64 OXA_TOOL::AnalyzerAmounts::*amount)
{
    const QList<OXA_TOOL::AnalyzerResource>& resources = OXA_TOOL::analyzerResources();
    return *std::find_if(resources.begin(), resources.end(),
        [amount](const OXA_TOOL::AnalyzerResource& resource) { return resource.amount == amount; });
}

/// Reports the core with which the analyzer exceeds the part.
void findMisfit(
    const AllCores& configuration, qint64 OXA_TOOL::AnalyzerAmounts::*amount, Findings& findings)
{
    if (!configuration.part)
        return;
    const OXA_TOOL::AnalyzerAmounts available = OXA_TOOL::amountsOf(*configuration.part);
    const OXA_TOOL::AnalyzerResource& resource = resourceOf(amount);
    const int position = firstCore(configuration, [&](const OXA_TOOL::AnalyzerAmounts& estimate) {
        return resource.exceeds(estimate, available);
    });
    if (position >= 0)
        findings.add({position},
            QString("the %1 %2 %3, %4 has %5")
                .arg(resource.low > 0 ? "analyzer takes about" : "memories take",
                    QString::number(configuration.amounts.last().*amount), resource.units,
                    configuration.part->name, QString::number(available.*amount)));
}

}

void findMissingShadowSram(const AllCores& configuration, Findings& findings)
{
    if (!configuration.part || !configuration.part->resources.value(DEV::ShadowSramEntry).isEmpty())
        return;
    for (const AnyCore& core : configuration.cores) {
        if (core.implementation == ShadowSram)
            findings.add(core.place(),
                QString("its memory becomes block SRAM: %1 has no shadow SRAM")
                    .arg(configuration.part->name));
        if (core.tableMemory == ShadowSram)
            findings.add(core.place(),
                QString("its expression tables become block SRAM: %1 has no shadow SRAM")
                    .arg(configuration.part->name));
    }
}

void findLutFit(const AllCores& configuration, Findings& findings)
{
    findMisfit(configuration, &OXA_TOOL::AnalyzerAmounts::luts, findings);
}

void findRegisterFit(const AllCores& configuration, Findings& findings)
{
    findMisfit(configuration, &OXA_TOOL::AnalyzerAmounts::registers, findings);
}

void findBlockSramFit(const AllCores& configuration, Findings& findings)
{
    findMisfit(configuration, &OXA_TOOL::AnalyzerAmounts::blockSram, findings);
}

void findShadowSramFit(const AllCores& configuration, Findings& findings)
{
    findMisfit(configuration, &OXA_TOOL::AnalyzerAmounts::shadowSram, findings);
}

void findNearLimit(const AllCores& configuration, Findings& findings)
{
    if (configuration.amounts.isEmpty())
        return;
    const OXA_TOOL::AnalyzerAmounts available = OXA_TOOL::amountsOf(*configuration.part);
    const OXA_TOOL::AnalyzerAmounts& whole = configuration.amounts.last();
    for (const OXA_TOOL::AnalyzerResource& resource : OXA_TOOL::analyzerResources()) {
        if (resource.isNear(whole, available))
            findings.add({int(configuration.amounts.size()) - 1},
                QString(
                    "the analyzer takes about %1 %2, %3 has %4, and synthesis may take %5 percent"
                    " more")
                    .arg(QString::number(whole.*resource.amount), resource.units,
                        configuration.part->name, QString::number(available.*resource.amount),
                        QString::number(resource.low)));
    }
}

}
