// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TRIGGER_TRIGGER_TABLE_H
#define OXACAPTURE_TRIGGER_TRIGGER_TABLE_H

#include "oxacapture/oxacapture_export.h"

#include "oxautils/model/ao_core.h"

#include <vector>

namespace OXA_CAPTURE {

/// A function of match units' outputs, as a table.
struct TriggerTable {
    std::vector<int> units; ///< whose outputs address it, the address's lowest bit first
    std::vector<bool> rows; ///< an address past the end gives false

    /// Whether units and rows are the same, not only the function.
    bool operator==(const TriggerTable& other) const
    {
        return units == other.units && rows == other.rows;
    }

    /// The value for `outputs`; bit k is the output of unit k.
    bool at(quint32 outputs) const
    {
        size_t address = 0;
        for (size_t bit = 0; bit < units.size(); ++bit)
            address |= size_t(outputs >> units[bit] & 1) << bit;
        return address < rows.size() && rows[address];
    }
};

/// The function of `text` as an expression of `core`: for a static one its value in Verilog, for
/// all outputs of the units that it names; for a dynamic one the table that is loaded into the
/// core, for all outputs of the units that are switched on.
///
/// False when it is not such an expression, with the reason in `error`.
OXACAPTURE_EXPORT bool triggerTable(
    const OXA::AoCore& core, const QString& text, TriggerTable& table, QString* error);

}

#endif
