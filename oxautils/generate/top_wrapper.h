// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_TOP_WRAPPER_H
#define OXAUTILS_GENERATE_TOP_WRAPPER_H

#include "oxautils/model/watched_bits.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>

namespace OXA {

/// `names` as references in Verilog.
QStringList escapedSignalNames(const QStringList& names);

/// The signals of a connection: one name, or several in braces, most significant first. Expects
/// escaped names.
QString concatenation(const QStringList& escapedNames);

/// Logs the first of `wordFaults` as a critical message, when there is one.
void logWordFaults(const QStringList& faults);

/// Writes the wrapper for `cores` (one control bus each); `writeAnalyzers` adds the instances.
/// `outputs` are its last ports. Warns of empty names, with their core.
void writeTopWrapper(QTextStream& out, const QList<WatchedBits>& cores, const QStringList& outputs,
    const std::function<void(QTextStream&)>& writeAnalyzers);

}

#endif
