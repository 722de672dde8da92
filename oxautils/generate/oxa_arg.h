#ifndef OXAUTILS_GENERATE_OXA_ARG_H
#define OXAUTILS_GENERATE_OXA_ARG_H

#include "oxautils/oxautils_export.h"

#include <QString>

namespace OXA {

/// A generation request. Hosts fill it by position, so the order of the fields stays.
struct OXAUTILS_EXPORT OxaArg {
    QString configFile; ///< the analyzer configuration; the ending "oxa" matters to depth registers
    QString outputFile; ///< the netlist that synthesis writes
    QString device; ///< the part number: first key into the device catalogue
    QString package; ///< the device name, "QX1N-9": second key into the device catalogue
    QString workDir; ///< where everything generated goes; emptied by every run
    QString ipDir; ///< root of the installed cores; only read
    QString customTop; ///< not empty: the host brings its own top (see OxaPrepare)
};

}

#endif
