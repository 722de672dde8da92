// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_STATE_OPTIONS_H
#define APPS_OXA_STATE_OPTIONS_H

#include "design_options.h"

#include "oxautils/config/configuration.h"
#include "oxautils/model/state_names.h"

/// Adds --enum.
void addEnumOption(Command& command, QStringList& enums);

/// Reads the texts of --enum for signals of `configuration`, which is read from `file`. False with
/// the reasons on `err`.
bool readEnums(const QStringList& enums, const DesignOptions& design, const QString& file,
    const OXA::Configuration& configuration, OXA::StateNames& states, TextOut& err);

/// The names of values beside the configuration `file`; none, with a warning on `err`, when they
/// cannot be read.
OXA::StateNames knownStates(const QString& file, TextOut& err);

#endif
