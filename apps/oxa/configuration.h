#ifndef APPS_OXA_CONFIGURATION_H
#define APPS_OXA_CONFIGURATION_H

#include "text_out.h"

#include "oxautils/config/oxa_mode.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

/// A configuration file as it was read; owns its cores, which are of the mode's kind.
struct Configuration {
    OXA::OxaMode mode = OXA::Invalid;
    QList<OXA::AoCore*> cores;
    QList<OXA::AOCore_Lite*> liteCores;

    Configuration() = default;
    ~Configuration();
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;
};

/// Reads the file `path`. False, said on `err` with what to do about it, when it cannot be read; a
/// configuration without cores can.
bool readConfiguration(const QString& path, Configuration& configuration, TextOut& err);

/// Whether every signal name stays one word in generated Verilog. False, said on `err`, when one
/// does not: what follows it would be code.
bool namesStayWords(const QString& path, const Configuration& configuration, TextOut& err);

#endif
