#include "oxautils/check/part_rules.h"

#include "oxautils/resource/capture_memory.h"

#include <dev/device_facts.h>

namespace OXA {

namespace {

/// Says where the cores' memories of `kind` come to more than the part has.
void findMisfit(const Configuration& configuration, OXA_TOOL::MemoryKind kind, const char* unit,
    Findings& findings)
{
    if (!configuration.part)
        return;
    const DEV::ChipInfo& part = *configuration.part;
    const qint64 available = OXA_TOOL::deviceMemory(part.partNumber, part.name).of(kind);
    qint64 taken = 0;
    for (const AnyCore& core : configuration.cores) {
        const bool built = !core.lite || core.position == 0; // further Lite cores are not
        if (!built || OXA_TOOL::builtKind(core.implementation, part.partNumber, part.name) != kind)
            continue;
        const qint64 before = taken;
        const OXA_TOOL::MemoryAmounts memory
            = OXA_TOOL::captureMemory(core.data.size(), core.depth, !core.lite, part.name);
        taken += memory.of(kind);
        if (before <= available && taken > available)
            findings.add(core.place(),
                QString("with its memory the cores take %1 %2, %3 has %4")
                    .arg(QString::number(taken), unit, part.name, QString::number(available)));
    }
}

}

void findMissingShadowSram(const Configuration& configuration, Findings& findings)
{
    if (!configuration.part || !configuration.part->resources.value(DEV::ShadowSramEntry).isEmpty())
        return;
    for (const AnyCore& core : configuration.cores) {
        if (core.implementation == OXA_TOOL::ShadowSram)
            findings.add(core.place(),
                QString("its memory becomes block SRAM: %1 has no shadow SRAM")
                    .arg(configuration.part->name));
        if (core.tableMemory == OXA_TOOL::ShadowSram)
            findings.add(core.place(),
                QString("its expression tables become block SRAM: %1 has no shadow SRAM")
                    .arg(configuration.part->name));
    }
}

void findBlockSramFit(const Configuration& configuration, Findings& findings)
{
    findMisfit(configuration, OXA_TOOL::BlockSram, "block SRAMs", findings);
}

void findShadowSramFit(const Configuration& configuration, Findings& findings)
{
    findMisfit(configuration, OXA_TOOL::ShadowSram, "shadow SRAMs", findings);
}

void findRegisterFit(const Configuration& configuration, Findings& findings)
{
    findMisfit(configuration, OXA_TOOL::Registers, "registers", findings);
}

}
