// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_CONFIGURATION_H
#define OXAUTILS_CONFIG_CONFIGURATION_H

#include "oxautils/config/oxa_mode.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

/// A configuration file that was read; owns its cores, which are of the mode's kind.
struct OXAUTILS_EXPORT Configuration {
    OxaMode mode = Invalid; ///< of the file
    QList<AoCore*> cores; ///< of a Standard file; owned
    QList<AOCore_Lite*> liteCores; ///< of a Lite file; owned

    Configuration() = default;
    ~Configuration();
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;

    bool isEmpty() const { return cores.isEmpty() && liteCores.isEmpty(); } ///< no core
};

/// Reads the file `path` of either mode. False when it cannot be read, with lines to show in
/// `error`: "PATH: REASON" and, for malformed XML, what to do. A configuration without cores can be
/// read.
OXAUTILS_EXPORT bool readConfiguration(
    const QString& path, Configuration& configuration, QString* error);

/// Replaces the file `path` by `configuration`, checksum included. When it cannot be written, the
/// old file is unchanged and the result is false, with "PATH: REASON" in `error`.
OXAUTILS_EXPORT bool writeConfiguration(
    const QString& path, const Configuration& configuration, QString* error);

/// Older layouts capture the signals of marked ports; the mark is no longer written. Adds these
/// signals to the data signals of `core`, just read, so that writing keeps them; true when there
/// were any.
OXAUTILS_EXPORT bool adoptMarkedPorts(AoCore& core);

/// A line to show, "PATH: FAULT; HINT", for each signal name that is not one token in generated
/// Verilog: what follows it would be code.
OXAUTILS_EXPORT QStringList wordFaults(const QString& path, const Configuration& configuration);

}

#endif
