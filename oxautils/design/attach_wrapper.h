// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_ATTACH_WRAPPER_H
#define OXAUTILS_DESIGN_ATTACH_WRAPPER_H

#include "oxautils/design/attach.h"

namespace OXA {

/// The analyzer's pads and outputs that are ports of each wrapper, and of no design.
QStringList addedPorts(const AttachRequest& request);

/// The ports of the top, in their order.
QVector<DesignSignal> portsOf(const Design& design);

/// The name of the design's module when the wrapper has the top's name.
QString renamedTop(const Design& design);

/// The wrapper's module `name`: the design, the analyzer, and wires for the nets of `watched`,
/// connected by Yosys or, `byPath`, by references.
QByteArray wrapperText(const Design& design, const QString& name,
    const QVector<WatchedBit>& watched, const AttachRequest& request, bool byPath);

/// The analyzer and these wires alone, in a module beside the design at the path `instance`. In a
/// flat design all nets are in the top.
QByteArray besideText(const Design& design, const QString& instance,
    const QVector<WatchedBit>& watched, const DesignSources& sources, bool isFlat);

/// A wrapper without analyzer, with the same net names as one with it.
QByteArray plainWrapperText(const Design& design);

}

#endif
