#include "oxautils/resource/resource_estimate.h"

#include "oxautils/resource/device_facts.h"

#include <dev/device_db.h>

#include <algorithm>
#include <cmath>

namespace OXA_TOOL {

namespace {

// Bits of a block without its ninth bits and with them.
constexpr int kBlock16k = 16384;
constexpr int kBlock18k = 18432;
constexpr int kBlock8k = 8192;
constexpr int kBlock9k = 9216;

constexpr int kWidestMode = 36; // of a block, in bits; it then holds 256 samples
constexpr int kWidestModeDepth = 256;

constexpr int kSsramBlockBits = 64;

// Entries of ChipInfo::resources.
constexpr int kRegisterEntry = 2;
constexpr int kSsramEntry = 4;
constexpr int kBsramEntry = 5;

constexpr const char* kDevicesWithoutSsram[] = {"QX5AST-138B", "QX5A-138B", "QX5AT-138B",
    "QX5AS-138B", "QX5AT-75B", "QX5A-25A", "QX5AS-25A", "QX5AR-25A", "QX5A-60B", "QX5AT-60B"};

struct SsramSize {
    const char* device;
    int bits;
};

// Devices on which other bits are usable than the catalogue's kbit say.
constexpr SsramSize kSsramSizes[] = {
    {"QX1NZ-1",    4608   },
    {"QX1N-1P5",   12672  },
    {"QX1N-2",     18432  },
    {"QX1NR-2",    18432  },
    {"QX1NZ-2",    18432  },
    {"QX1N-9",     17280  },
    {"QX1NR-9",    17280  },
    {"QX2A-18",    41472  },
    {"QX2AR-18",   41472  },
    {"QX2ANR-18",  41472  },
    {"QX2AN-9X",   41472  },
    {"QX2AN-18X",  41472  },
    {"QX1AN-9",    41472  },
    {"QX2AN-55",   109440 },
    {"QX2A-55",    109440 },
    {"QX5AT-138",  1105920},
    {"QX5AST-138", 1105920},
    {"QX5A-138",   1105920},
    {"QX5AS-138",  1105920},
    {"QX5A-25",    184320 },
    {"QX5AR-25",   184320 },
    {"QX5AS-25",   184320 },
    {"QX3A-20",    184320 },
    {"QX3AR-20",   184320 },
    {"QX5AT-75",   693504 },
    {"QX5ART-15",  120960 },
    {"QX5AT-15",   120960 },
    {"QX5ANRT-15", 120960 },
    {"QX5ANT-15",  120960 },
    {"QX5AT-60",   479232 },
    {"QX5A-60",    479232 },
    {"QX1AN-5",    13312  },
};

int product(int a, int b) { return int(unsigned(a) * unsigned(b)); }

int withMark(int width) { return int(unsigned(width) + 1); }

int roundedUp(int bits, int block) { return bits / block + (bits % block != 0 ? 1 : 0); }

template <size_t N> bool isOneOf(const QString& device, const char* const (&devices)[N])
{
    return std::any_of(std::begin(devices), std::end(devices),
        [&device](const char* name) { return device == QLatin1String(name); });
}

int usableBlockBits(int width, int depth)
{
    if (depth >= 4096)
        return kBlock16k;
    if (width > 32 || product(width, depth) > kBlock16k)
        return kBlock18k;
    return width == 9 || width == 17 || width == 18 ? kBlock18k : kBlock16k;
}

// The device's own rule: a sample takes four bits, and a block that is only begun is not counted.
int narrowBlocks(int depth)
{
    const int bits = product(depth, 4);
    return bits <= kBlock16k ? 1 : bits / kBlock16k;
}

QString resource(const DEV::ChipInfo& chip, int entry) { return chip.resources.value(entry); }

// For the devices that are not listed; the text ends in a two-letter unit.
int catalogueSsramBits(QString text)
{
    text.chop(2);
    return product(text.toInt(), 1024);
}

}

int bsramNumberRequired(int width, int depth)
{
    if (width == 0)
        return 0;
    if (depth > kWidestModeDepth)
        return roundedUp(product(width, depth), usableBlockBits(width, depth));
    return width <= kWidestMode ? 1 : roundedUp(width, kWidestMode);
}

int bsramNumberRequiredWithAdjust(int width, int depth)
{
    return width == 0 ? 0 : bsramNumberRequired(withMark(width), depth);
}

int bsramNumberRequiredFor1N9C(int width, int depth)
{
    return width == 1 || width == 2 ? narrowBlocks(depth) : bsramNumberRequired(width, depth);
}

int bsramNumberRequiredWithAdjustFor1N9C(int width, int depth)
{
    return width == 1 ? narrowBlocks(depth) : bsramNumberRequiredWithAdjust(width, depth);
}

int bsramNumberRequiredAdjustFor20k(int width, int depth)
{
    if (depth <= kWidestModeDepth)
        return roundedUp(width, kWidestMode);
    const bool withoutNinthBits = depth >= 4096 || (depth == 2048 && width > 8);
    return roundedUp(product(width, depth), withoutNinthBits ? kBlock8k : kBlock9k);
}

int bsramNumberRequiredWithAdjustFor20k(int width, int depth)
{
    return width == 0 ? 0 : bsramNumberRequiredAdjustFor20k(withMark(width), depth);
}

int ssramNumberRequiredWithAdjust(int width, int depth, bool adjust)
{
    const double bits = adjust ? withMark(width) : width;
    if (depth > 16)
        return product(int(std::ceil(bits * 16 / kSsramBlockBits)), depth / 16);
    return int(std::ceil(bits / 4));
}

int regNumberRequiredWidthAdjust(int width, int depth, bool adjust)
{
    return product(adjust ? withMark(width) : width, depth);
}

int currentDeviceBsramAmount(const QString& key, const QString& device)
{
    const int blockKbit = hasBlocksOf9k(device) ? 9 : 18;
    return resource(DEV::DeviceDb::instance().find(key, device), kBsramEntry).toInt() / blockKbit;
}

int currentDeviceSsramAmount(const QString& key, const QString& device)
{
    if (isOneOf(device, kDevicesWithoutSsram))
        return 0;
    const DEV::ChipInfo chip = DEV::DeviceDb::instance().find(key, device);
    const QString text = resource(chip, kSsramEntry);
    if (text.isEmpty())
        return 0;
    const auto size = std::find_if(std::begin(kSsramSizes), std::end(kSsramSizes),
        [&chip](const SsramSize& size) { return chip.name == QLatin1String(size.device); });
    const int bits = size != std::end(kSsramSizes) ? size->bits : catalogueSsramBits(text);
    return bits / kSsramBlockBits;
}

int currentDeviceRegAmount(const QString& key, const QString& device)
{
    return resource(DEV::DeviceDb::instance().find(key, device), kRegisterEntry).toInt();
}

}
