#ifndef OXAUTILS_GENERATE_NAME_SUMS_H
#define OXAUTILS_GENERATE_NAME_SUMS_H

#include "oxautils/oxautils_export.h"

#include <QList>
#include <QStringList>

namespace OXA {

class AoCore;
class AOCore_Lite;

/// What tells the names behind one core's bits: the CRC-32 of its sample clock's name, that of its
/// data signals and that of each available trigger port, in this order (docs: JTAG protocol). A
/// chip that holds them can tell a configuration in which names are other ones or stand elsewhere.
using NameSums = QList<quint32>;

/// The sums of a clock and of the lists of bits behind it.
OXAUTILS_EXPORT NameSums nameSums(const QString& clock, const QList<QStringList>& lists);
OXAUTILS_EXPORT NameSums nameSums(const AoCore& core);
OXAUTILS_EXPORT NameSums nameSums(const AOCore_Lite& core);

/// Writes the file that the installed cores include for the sums of `cores`, in the order of their
/// positions, into the work directory. False, with a critical message, when it cannot be written.
OXAUTILS_EXPORT bool writeNameSums(const QString& workDir, const QList<NameSums>& cores);

}

#endif
