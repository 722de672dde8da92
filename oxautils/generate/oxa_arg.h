// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_OXA_ARG_H
#define OXAUTILS_GENERATE_OXA_ARG_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// A generation request. Hosts fill it by position, so the order of the fields is fixed.
struct OXAUTILS_EXPORT OxaArg {
    QString configFile; ///< the analyzer configuration; depth registers depend on its suffix "oxa"
    QString outputFile; ///< the netlist that synthesis writes
    QString device; ///< the part number: first key into the device catalogue
    QString package; ///< the device name, "QX1N-9": second key into the device catalogue
    QString workDir; ///< for all generated files; every run empties it
    QString ipDir; ///< root of the installed cores; only read
    QString customTop; ///< not empty: the host has its own top (see OxaPrepare)
};

}

#endif
