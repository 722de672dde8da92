// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_NAMES_FILE_H
#define OXAUTILS_CONFIG_NAMES_FILE_H

#include "oxautils/model/state_names.h"

#include <QMap>
#include <QString>

namespace OXA {

/// What a user knows about a configuration, and no synthesis needs: the file FILE.names beside the
/// configuration FILE (docs/captures.md).
struct OXAUTILS_EXPORT KnownNames {
    QMap<int, double> clocks; ///< frequencies of sample clocks in Hz, by the cores' indexes
    StateNames states; ///< names of the values of signals
};

/// Reads the names of the configuration `path`. Without the file, `names` is empty. Members that
/// are not known are ignored. False when the file cannot be read, with "FILE: REASON" in `error`.
OXAUTILS_EXPORT bool readKnownNames(const QString& path, KnownNames& names, QString* error);

/// Adds the names of the values of signals to that file, in place of what it has for these signals.
/// It is replaced in one step, and keeps all other members. False when it cannot be read or
/// written, with "FILE: REASON" in `error`.
OXAUTILS_EXPORT bool addKnownStates(const QString& path, const StateNames& states, QString* error);

/// The binary digits of a number: 5, 0x5, 0b101, 3'd5, 3'b101, with `_` between digits. Empty when
/// `text` is no number without unknown bits.
OXAUTILS_EXPORT QString binaryDigits(const QString& text);

}

#endif
