// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_DUMP_TEXT_H
#define OXACAPTURE_WAVEFORM_DUMP_TEXT_H

#include "oxacapture/waveform/unique_names.h"
#include "oxautils/model/signal_item.h"

namespace OXA_CAPTURE {

// The text of value change dumps.

constexpr int kDumpNumberBits = 32; ///< of a capture's variable with a number: of a window, a stamp

/// An identifier: a number in base 94.
QByteArray dumpIdentifier(int number);

/// A name as one word. Spaces separate words, and a word with a leading dollar sign ends a
/// declaration.
QString dumpWord(const QString& name);

/// The name of the variable of a signal or a bus, with its range: "count [7:0]".
QString takeDumpName(const OXA::SignalItem& item, UniqueNames& names);

QString dumpDeclaration(
    const char* kind, int width, const QByteArray& identifier, const QString& name);

void addDumpChange(const QByteArray& bits, const QByteArray& identifier, QByteArray& text);

}

#endif
