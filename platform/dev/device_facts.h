// SPDX-License-Identifier: Apache-2.0
#ifndef DEV_DEVICE_FACTS_H
#define DEV_DEVICE_FACTS_H

#include <QString>

namespace DEV {

/// How the block SRAMs of a device are counted.
enum BlockKind : int {
    Blocks18k, ///< 18 kbit each
    Blocks9k, ///< 9 kbit each
    Blocks1N9C, ///< 18 kbit each; words of one and two bits take four
};

/// The control core's top for a device.
enum ControlTop : int {
    TopCommon,
    Top138, ///< for dies where signals take longer than a period of tck
    Top6k, ///< for devices whose JTAG primitive samples the answer half a period of tck early
};

constexpr int kCatalogued = -1; ///< the amount of shadow SRAM is in the catalogue
constexpr int kNoShadowSram = 0; ///< no usable shadow SRAM, even if the catalogue has some

/// What the analyzer's rules need of a device beside its record in the catalogue.
struct DeviceFacts {
    const char* name; ///< of the device, with its version; compared exactly
    BlockKind blocks;
    int shadowBits; ///< usable bits of shadow SRAM, `kNoShadowSram` or `kCatalogued`
    int extraStages; ///< samples by which the data depth register is lower
    ControlTop controlTop;
    bool hasZv; ///< the cores need a define for its "ZV" variant
};

/// Devices that are not here are like `kOtherDevices`. "QX5A-138" and "QX5A-138B" are two devices.
constexpr DeviceFacts kDeviceFacts[] = {
    {"QX1A-1C",     Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1AN-1C",    Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1AN-5",     Blocks18k,  13312,         0, TopCommon, false},
    {"QX1AN-9",     Blocks18k,  41472,         0, TopCommon, false},
    {"QX1N-1",      Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1N-1P5",    Blocks18k,  12672,         0, TopCommon, false},
    {"QX1N-2",      Blocks18k,  18432,         0, TopCommon, false},
    {"QX1N-2B",     Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1N-4",      Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1N-4B",     Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1N-6",      Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1N-9",      Blocks18k,  17280,         1, TopCommon, false},
    {"QX1N-9C",     Blocks1N9C, kCatalogued,   0, TopCommon, false},
    {"QX1NR-2",     Blocks18k,  18432,         0, TopCommon, false},
    {"QX1NR-4",     Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NR-4B",    Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NR-9",     Blocks18k,  17280,         1, TopCommon, false},
    {"QX1NRF-4B",   Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NS-2",     Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NS-2C",    Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NSE-2C",   Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NSR-2",    Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NSR-2C",   Blocks18k,  kCatalogued,   1, TopCommon, false},
    {"QX1NZ-1",     Blocks18k,  4608,          0, TopCommon, true },
    {"QX1NZ-1D",    Blocks18k,  kCatalogued,   0, TopCommon, true },
    {"QX1NZ-2",     Blocks18k,  18432,         0, TopCommon, false},
    {"QX2A-18",     Blocks18k,  41472,         1, TopCommon, false},
    {"QX2A-55",     Blocks18k,  109440,        1, TopCommon, false},
    {"QX2AN-9X",    Blocks18k,  41472,         0, TopCommon, false},
    {"QX2AN-18X",   Blocks18k,  41472,         0, TopCommon, false},
    {"QX2AN-55",    Blocks18k,  109440,        0, TopCommon, false},
    {"QX2ANR-18",   Blocks18k,  41472,         0, TopCommon, false},
    {"QX2AR-18",    Blocks18k,  41472,         1, TopCommon, false},
    {"QX3A-10A",    Blocks9k,   kCatalogued,   0, TopCommon, false},
    {"QX3A-20",     Blocks18k,  184320,        0, TopCommon, false},
    {"QX3A-20A",    Blocks9k,   kCatalogued,   0, TopCommon, false},
    {"QX3A-50A",    Blocks9k,   kCatalogued,   0, TopCommon, false},
    {"QX3AN-6A",    Blocks9k,   kCatalogued,   0, Top6k,     false},
    {"QX3ANRT-6A",  Blocks9k,   kCatalogued,   0, Top6k,     false},
    {"QX3ANT-6A",   Blocks9k,   kCatalogued,   0, Top6k,     false},
    {"QX3AR-20",    Blocks18k,  184320,        0, TopCommon, false},
    {"QX3AR-20A",   Blocks9k,   kCatalogued,   0, TopCommon, false},
    {"QX5A-25",     Blocks18k,  184320,        0, TopCommon, false},
    {"QX5A-25A",    Blocks18k,  kNoShadowSram, 0, TopCommon, false},
    {"QX5A-60",     Blocks18k,  479232,        0, TopCommon, false},
    {"QX5A-60B",    Blocks18k,  kNoShadowSram, 0, TopCommon, false},
    {"QX5A-138",    Blocks18k,  1105920,       0, TopCommon, false},
    {"QX5A-138B",   Blocks18k,  kNoShadowSram, 0, Top138,    false},
    {"QX5A-138C",   Blocks18k,  kCatalogued,   0, Top138,    false},
    {"QX5ANRT-15",  Blocks18k,  120960,        0, TopCommon, false},
    {"QX5ANT-15",   Blocks18k,  120960,        0, TopCommon, false},
    {"QX5AR-25",    Blocks18k,  184320,        0, TopCommon, false},
    {"QX5AR-25A",   Blocks18k,  kNoShadowSram, 0, TopCommon, false},
    {"QX5ART-15",   Blocks18k,  120960,        0, TopCommon, false},
    {"QX5AS-25",    Blocks18k,  184320,        0, TopCommon, false},
    {"QX5AS-25A",   Blocks18k,  kNoShadowSram, 0, TopCommon, false},
    {"QX5AS-138",   Blocks18k,  1105920,       0, TopCommon, false},
    {"QX5AS-138B",  Blocks18k,  kNoShadowSram, 0, Top138,    false},
    {"QX5AS-138C",  Blocks18k,  kCatalogued,   0, Top138,    false},
    {"QX5AST-138",  Blocks18k,  1105920,       0, TopCommon, false},
    {"QX5AST-138B", Blocks18k,  kNoShadowSram, 0, Top138,    false},
    {"QX5AST-138C", Blocks18k,  kCatalogued,   0, Top138,    false},
    {"QX5AT-15",    Blocks18k,  120960,        0, TopCommon, false},
    {"QX5AT-60",    Blocks18k,  479232,        0, TopCommon, false},
    {"QX5AT-60B",   Blocks18k,  kNoShadowSram, 0, TopCommon, false},
    {"QX5AT-75",    Blocks18k,  693504,        0, TopCommon, false},
    {"QX5AT-75B",   Blocks18k,  kNoShadowSram, 0, Top138,    false},
    {"QX5AT-75C",   Blocks18k,  kCatalogued,   0, Top138,    false},
    {"QX5AT-138",   Blocks18k,  1105920,       0, TopCommon, false},
    {"QX5AT-138B",  Blocks18k,  kNoShadowSram, 0, Top138,    false},
    {"QX5AT-138C",  Blocks18k,  kCatalogued,   0, Top138,    false},
};

constexpr DeviceFacts kOtherDevices = {"", Blocks18k, kCatalogued, 0, TopCommon, false};

/// The row of the device named `name`, or `kOtherDevices`. Needs no symbol of the catalogue's
/// library, so a host that replaces that library keeps these facts.
inline const DeviceFacts& deviceFacts(const QString& name)
{
    for (const DeviceFacts& facts : kDeviceFacts) {
        if (name == QLatin1String(facts.name))
            return facts;
    }
    return kOtherDevices;
}

/// Entries of `ChipInfo::resources`.
enum ResourceEntry : int {
    LutEntry,
    AdderEntry,
    RegisterEntry,
    IoEntry,
    ShadowSramEntry, ///< with its two-letter unit; empty: the device has none
    BlockSramEntry, ///< kbit
};

}

#endif
