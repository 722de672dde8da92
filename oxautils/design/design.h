// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_DESIGN_H
#define OXAUTILS_DESIGN_DESIGN_H

#include "oxautils/oxautils_export.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

namespace OXA {

/// A net, a port or a memory of a user's design, before any optimization.
struct OXAUTILS_EXPORT DesignSignal {
    /// As a port of the top; `Inside` is no port.
    enum Direction { Inside, Input, Output, Inout };

    /// From the top: "soc/cpu/pc". A '.' belongs to an escaped name; scopes of generate blocks are
    /// components ("soc/lane[0]/sum").
    QString path;
    QString flatName; ///< in the flattened design, without the top: "cpu.pc"; empty in waveforms
    int width = 1; ///< bits
    int offset = 0; ///< the lowest index of its range
    bool ascending = false; ///< declared as [low:high]: the first bit has the lowest index
    Direction direction = Inside; ///< of a port of the top
    int port = 0; ///< of the top: its number in the port list, from 1
    int memoryWords = 0; ///< of a memory, which cannot be watched; 0 for a net
    int clock = -1; ///< of a register: its position in the design's clocks; else -1
    bool fallingEdge = false; ///< the register takes values at the clock's falling edge
    QVector<QPair<QString, QString>> states; ///< an enumeration: binary digits and name
    QString file; ///< where it is declared; may be empty
    int line = 0; ///< from 1; 0 when not known

    bool isMemory() const { return memoryWords > 0; } ///< it cannot be watched
    bool isRegister() const { return clock >= 0; } ///< a flip-flop drives it
    bool isVector() const { return width > 1 || offset != 0; } ///< it has a range

    /// The index of the first bit, the most significant: 7 of "[7:0]".
    int firstIndex() const { return indexAt(width - 1); }
    int lastIndex() const { return indexAt(0); } ///< of the least significant bit

    /// The index of the bit at `position`, counted from 0 at the last bit.
    int indexAt(int position) const
    {
        return ascending ? offset + width - 1 - position : offset + position;
    }
    /// The position of the bit `index`, which may be outside of the range.
    int positionOf(int index) const
    {
        return ascending ? offset + width - 1 - index : index - offset;
    }

    /// "soc/cpu/pc[3]" for the bit at `position`, counted from 0 at the last, least significant
    /// bit; the path for a signal without range.
    QString bitName(int position) const;

    /// "[7:0]", or an empty text for a signal without range.
    QString rangeText() const;

    /// "input", "output", "inout", "register", "wire" or "memory".
    QString kindText() const;
};

/// The signals of a design or of a waveform.
struct OXAUTILS_EXPORT Design {
    QString top; ///< its module; empty for a waveform
    bool isWaveform = false; ///< then registers and clocks are unknown
    QVector<DesignSignal> items; ///< sorted by path, numbers in it by value
    QStringList clocks; ///< of registers, each by its shortest name
    QHash<QString, int> clockNets; ///< every name of a clock's net, and its position in `clocks`
    QStringList kept; ///< modules and instances with the attribute keep_hierarchy
    QStringList warnings; ///< lines to show

    /// "rising edge of soc/clk" for a register.
    QString clockText(const DesignSignal& signal) const;
};

}

#endif
