// SPDX-License-Identifier: Apache-2.0
#ifndef DEV_FAMILY_FACTS_H
#define DEV_FAMILY_FACTS_H

#include <QStringList>
#include <QVector>

namespace DEV {

/// A way to an analyzer in a chip, and what it takes: files of ip/boards, with a blank between
/// them.
struct FamilyLink {
    const char*
        name; ///< "jtag": the chip's own JTAG port; "pins": another one, on four pins; "uart"
    /// The ports of an attached design that are the analyzer's pads of TMS, TCK, TDI and TDO; "-"
    /// for one that is not used.
    const char* pads;
    const char*
        verilog; ///< QX_JTAG, IBUF and OBUF; IBUF and OBUF are left out where they are cells
    const char* openOcd; ///< the TAP, the length of its instruction register, the instruction ER1
    const char* constraints; ///< timing, and an example of pins
};

constexpr int kMostLinks = 2; // of a family

/// Devices that the catalogue does not know, for which other tools synthesize, place and route.
struct FamilyFacts {
    const char* name;
    const char* devices; ///< in words
    const char* synthesis; ///< the command of Yosys
    FamilyLink links[kMostLinks]; ///< the first one is the default; past the end without a name
};

constexpr char kJtagPads[] = "tms_pad_i tck_pad_i tdi_pad_i tdo_pad_o";
constexpr char kNoPads[] = "- - - -";
constexpr char kUartPads[] = "- uart_clk_i uart_rx_i uart_tx_o";
constexpr char kUart[] = "uart";

constexpr char kPinsVerilog[] = "pins/QX_JTAG.v pins/IBUF.v pins/OBUF.v";
constexpr FamilyLink kUartLink
    = {kUart, kUartPads, "uart/QX_JTAG.v uart/uart_bridge.v pins/IBUF.v pins/OBUF.v", "", ""};

constexpr FamilyFacts kFamilies[] = {
    {"ice40",   "Lattice iCE40",                            "synth_ice40",
     {{"pins", kJtagPads, kPinsVerilog, "pins/openocd.cfg",
             "generic/tck.sdc ice40/tck.py ice40/icebreaker.pcf"},
            kUartLink}                                                                    },
    {"ecp5",    "Lattice ECP5",                             "synth_ecp5",
     {{"jtag", kNoPads, "ecp5/QX_JTAG.v pins/IBUF.v pins/OBUF.v", "ecp5/openocd.cfg",
             "ecp5/tck.py"},
            kUartLink}                                                                    },
    {"xilinx",  "Xilinx 7 series, UltraScale, UltraScale+", "synth_xilinx",
     {{"jtag", kNoPads, "xilinx/QX_JTAG.v", "xilinx/openocd.cfg", "xilinx/tck.xdc"},
            {kUart, kUartPads, "uart/QX_JTAG.v uart/uart_bridge.v", "", ""}}              },
    {"generic", "any, with four pins to spare",             "synth",
     {{"pins", kJtagPads, kPinsVerilog, "pins/openocd.cfg", "generic/tck.sdc"}, kUartLink}},
};

/// The row of the family named `name`; null when there is none.
inline const FamilyFacts* familyFacts(const QString& name)
{
    for (const FamilyFacts& facts : kFamilies) {
        if (name == QLatin1String(facts.name))
            return &facts;
    }
    return nullptr;
}

/// What it offers.
inline QVector<const FamilyLink*> linksOf(const FamilyFacts& family)
{
    QVector<const FamilyLink*> links;
    for (const FamilyLink& link : family.links) {
        if (link.name)
            links += &link;
    }
    return links;
}

/// The link of `family` named `name`, its first one without a name; null when it has no such link.
inline const FamilyLink* familyLink(const FamilyFacts& family, const QString& name)
{
    for (const FamilyLink* link : linksOf(family)) {
        if (name.isEmpty() || name == QLatin1String(link->name))
            return link;
    }
    return nullptr;
}

/// The ports of an attached design that are the analyzer's four pads; an empty name where one is
/// not used.
inline QStringList padPorts(const FamilyLink& link)
{
    QStringList names = QString(link.pads).split(' ');
    for (QString& name : names)
        name.remove('-');
    return names;
}

}

#endif
