// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_NAME_SUMS_H
#define OXAUTILS_GENERATE_NAME_SUMS_H

#include "oxautils/oxautils_export.h"

#include <QList>
#include <QStringList>

namespace OXA {

class AoCore;
class AOCore_Lite;

/// Checksums of the names of one core: CRC-32 of the sample clock's name, of the data signals and
/// of each available trigger port, in this order (docs: JTAG protocol). They show that a chip was
/// built from a configuration with other names, or with the names in another order.
using NameSums = QList<quint32>;

/// The checksums of a clock and of lists of bits.
OXAUTILS_EXPORT NameSums nameSums(const QString& clock, const QList<QStringList>& lists);
OXAUTILS_EXPORT NameSums nameSums(const AoCore& core); ///< of its clock, data and ports
OXAUTILS_EXPORT NameSums nameSums(const AOCore_Lite& core); ///< of its clock and data

/// Writes the file that the installed cores include for the checksums of `cores`, in the order of
/// their positions, into the work directory. False, with a critical message, when it cannot be
/// written.
OXAUTILS_EXPORT bool writeNameSums(const QString& workDir, const QList<NameSums>& cores);

}

#endif
