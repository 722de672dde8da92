// SPDX-License-Identifier: Apache-2.0
#include <oxautils/oxautils.h>

int main()
{
    const OXA::AoCore core(0);
    NorvoSyn::QxSynthesisSyncProxy engine(nullptr);
    const bool refused = engine.run({}) != 0 && !engine.messages().isEmpty();
    return DEV::DeviceDb::instance().chips().isEmpty() || core.dataOutShiftWidth() != 16
        || !refused;
}
