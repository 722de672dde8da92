// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_BIT_RANGE_H
#define OXAUTILS_MODEL_BIT_RANGE_H

#include "oxautils/oxautils_export.h"

#include <QString>
#include <QStringList>

namespace OXA {

/// A vector, or a part of one.
struct BitRange {
    QString base; ///< the vector's name
    int msb = 0; ///< index of the first bit
    int lsb = 0; ///< index of the last bit; may be larger than `msb`

    /// The name of the bit at `place`, counted from the first one: "count[7]".
    OXAUTILS_EXPORT QString bitName(int place) const;

    OXAUTILS_EXPORT QString text() const; ///< "[7:0]"
};

/// Removes "[7]" from the end of "count[7]"; false when there is no such index.
OXAUTILS_EXPORT bool takeIndex(QString& name, int& index);

/// "count" from 7 to 0 for bits "count[7]" to "count[0]", also in the other direction. False when
/// the bits are not such a range.
OXAUTILS_EXPORT bool bitRange(const QStringList& bits, BitRange& range);

}

#endif
