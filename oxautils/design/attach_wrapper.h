#ifndef OXAUTILS_DESIGN_ATTACH_WRAPPER_H
#define OXAUTILS_DESIGN_ATTACH_WRAPPER_H

#include "oxautils/design/attach.h"

namespace OXA {

/// The analyzer's pads, ports of each wrapper.
const QStringList& jtagPads();

/// The ports of the top, in their order.
QVector<DesignSignal> portsOf(const Design& design);

/// What the design's module is called when the wrapper has the top's name.
QString renamedTop(const Design& design);

/// The wrapper's module `name`: the design, the analyzer, and wires that are the nets of `watched`,
/// joined to them by Yosys or, `byPath`, by references.
QByteArray wrapperText(const Design& design, const QString& name,
    const QVector<WatchedBit>& watched, const AttachRequest& request, bool byPath);

/// A wrapper without analyzer, in which nets have the names that they have beside one.
QByteArray plainWrapperText(const Design& design);

}

#endif
