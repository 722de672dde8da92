// SPDX-License-Identifier: Apache-2.0
#include "oxautils/resource/resource_estimate.h"

#include <dev/device_db.h>
#include <dev/device_facts.h>

#include <cmath>

namespace OXA_TOOL {

namespace {

// Bits of a block without and with its ninth bits.
constexpr int kBlock16k = 16384;
constexpr int kBlock18k = 18432;
constexpr int kBlock8k = 8192;
constexpr int kBlock9k = 9216;

constexpr int kWidestMode = 36; // bits of a block for 256 samples
constexpr int kWidestModeDepth = 256;

constexpr int kSsramBlockBits = 64;

int product(int a, int b) { return int(unsigned(a) * unsigned(b)); }

int withMark(int width) { return int(unsigned(width) + 1); }

int roundedUp(int bits, int block) { return bits / block + (bits % block != 0 ? 1 : 0); }

int usableBlockBits(int width, int depth)
{
    if (depth >= 4096)
        return kBlock16k;
    if (width > 32 || product(width, depth) > kBlock16k)
        return kBlock18k;
    return width == 9 || width == 17 || width == 18 ? kBlock18k : kBlock16k;
}

// The device's rule: a sample takes four bits, and a partial last block is not counted.
int narrowBlocks(int depth)
{
    const int bits = product(depth, 4);
    return bits <= kBlock16k ? 1 : bits / kBlock16k;
}

QString resource(const DEV::ChipInfo& chip, DEV::ResourceEntry entry)
{
    return chip.resources.value(entry);
}

// For devices that are not listed; the text ends in a unit of two letters.
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
    const int blockKbit = DEV::deviceFacts(device).blocks == DEV::Blocks9k ? 9 : 18;
    return resource(DEV::DeviceDb::instance().find(key, device), DEV::BlockSramEntry).toInt()
        / blockKbit;
}

int currentDeviceSsramAmount(const QString& key, const QString& device)
{
    if (DEV::deviceFacts(device).shadowBits == DEV::kNoShadowSram)
        return 0;
    const DEV::ChipInfo chip = DEV::DeviceDb::instance().find(key, device);
    const QString text = resource(chip, DEV::ShadowSramEntry);
    if (text.isEmpty())
        return 0;
    const int bits = DEV::deviceFacts(chip.name).shadowBits;
    return (bits > 0 ? bits : catalogueSsramBits(text)) / kSsramBlockBits;
}

int currentDeviceRegAmount(const QString& key, const QString& device)
{
    return resource(DEV::DeviceDb::instance().find(key, device), DEV::RegisterEntry).toInt();
}

}
