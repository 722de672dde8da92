#ifndef OXAUTILS_DESIGN_RTLIL_MODULE_H
#define OXAUTILS_DESIGN_RTLIL_MODULE_H

#include "oxautils/design/design.h"

#include <QHash>

#include <vector>

namespace OXA {

/// Bits of a module by their numbers, the least significant first; kConstant for what is no net.
struct RtlilBits {
    static constexpr int kConstant = -1;

    std::vector<int> bits;
    /// A wire without a declaration of which these are all; `bits` is empty then, and the other
    /// side of the connection tells their number.
    QByteArray whole;
};

/// A module as Yosys writes it: its named nets, its registers, the modules that it uses, and what
/// connects them.
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

    /// All bits of the undeclared wire `name`, which is `width` wide.
    std::vector<int> hiddenBits(const QByteArray& name, int width);
    int hiddenBit(const QByteArray& name, int index);

    /// The bits of `bits`, of which there are `width` when only the other side tells.
    std::vector<int> resolved(const RtlilBits& bits, int width);

private:
    QHash<QPair<QByteArray, int>, int> m_hidden;
};

/// The modules of a design by name, and which of them is the top.
struct RtlilDesign {
    QHash<QByteArray, RtlilModule> modules;
    QByteArray top;
};

/// Reads the file `path` that Yosys wrote; false when it is not that.
bool readRtlil(const QString& path, RtlilDesign& design);

}

#endif
