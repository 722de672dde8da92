// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_RTLIL_MODULE_H
#define OXAUTILS_DESIGN_RTLIL_MODULE_H

#include "oxautils/design/design.h"

#include <QHash>

#include <vector>

namespace OXA {

/// Bits of a module by number, the least significant first; kRtlilConstant for a bit that is not a
/// net.
using RtlilBits = std::vector<int>;
constexpr int kRtlilConstant = -1;

/// A module written by Yosys: its named nets, registers and instances, and their connections.
struct RtlilModule {
    struct Wire {
        int first = 0; ///< its least significant bit
        int width = 0;
    };
    struct Item {
        QString name;
        DesignSignal signal; ///< without path
        int first = 0;
    };
    struct Register {
        int output = 0;
        int clock = 0;
        bool fallingEdge = false;
    };
    struct Instance {
        QByteArray module;
        QString name;
        std::vector<std::pair<QByteArray, RtlilBits>> connections; ///< by port
    };

    QHash<QByteArray, Wire> wires;
    std::vector<Item> items;
    std::vector<Register> registers;
    std::vector<Instance> instances;
    std::vector<std::pair<RtlilBits, RtlilBits>> connections;
    int bitCount = 0;
};

/// The modules of a design by name, without black boxes, and its top.
struct RtlilDesign {
    QHash<QByteArray, RtlilModule> modules;
    QByteArray top;
    QStringList kept; ///< modules and instances with the attribute keep_hierarchy
};

/// Reads the file `path` that Yosys wrote; false when it is not such a file.
bool readRtlil(const QString& path, RtlilDesign& design);

}

#endif
