#ifndef OXAUTILS_CONFIG_CONFIGURATION_H
#define OXAUTILS_CONFIG_CONFIGURATION_H

#include "oxautils/config/oxa_mode.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

namespace OXA {

/// A configuration file as it was read; owns its cores, which are of the mode's kind.
struct OXAUTILS_EXPORT Configuration {
    OxaMode mode = Invalid;
    QList<AoCore*> cores;
    QList<AOCore_Lite*> liteCores;

    Configuration() = default;
    ~Configuration();
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;

    bool isEmpty() const { return cores.isEmpty() && liteCores.isEmpty(); }
};

/// Reads the file `path` of either mode. False when it cannot be read, with lines to show in
/// `error`: "PATH: REASON", and for a file that is no XML what to do about it. A configuration
/// without cores can be read.
OXAUTILS_EXPORT bool readConfiguration(
    const QString& path, Configuration& configuration, QString* error);

/// Replaces the file `path` by `configuration`, checksum included. False, with "PATH: REASON" in
/// `error`, when that cannot be written; the old file then stays.
OXAUTILS_EXPORT bool writeConfiguration(
    const QString& path, const Configuration& configuration, QString* error);

/// Files of an older layout capture ports' signals by a mark that is no longer written. Makes such
/// signals data signals of `core`, as it was read, so that writing does not lose them; true when
/// there were any.
OXAUTILS_EXPORT bool adoptMarkedPorts(AoCore& core);

/// A line to show, "PATH: FAULT; HINT", for each signal name that does not stay one word in
/// generated Verilog: what follows it would be code.
OXAUTILS_EXPORT QStringList wordFaults(const QString& path, const Configuration& configuration);

}

#endif
