#ifndef OXAUTILS_GENERATE_TOP_WRAPPER_H
#define OXAUTILS_GENERATE_TOP_WRAPPER_H

#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>

namespace OXA {

/// What one core asks of the wrapper's port list, as the design names it.
struct WrapperSignals {
    QStringList names; ///< data and trigger signals, in the order of the ports
    QString clock;
};

/// `names` as references in Verilog.
QStringList escapedSignalNames(const QStringList& names);

/// The signal part of a connection: the name alone, or all in braces, most significant first.
/// Expects escaped names.
QString concatenation(const QStringList& escapedNames);

/// Logs the first of `wordFaults` as a critical message, when there is one.
void logWordFaults(const QStringList& faults);

/// Writes the wrapper for `cores` (one control bus each); `writeAnalyzers` adds the instances.
/// Warns of empty names, with their core.
void writeTopWrapper(QTextStream& out, const QList<WrapperSignals>& cores,
    const std::function<void(QTextStream&)>& writeAnalyzers);

}

#endif
