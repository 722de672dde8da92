#ifndef APPS_OXA_FIT_H
#define APPS_OXA_FIT_H

#include "text_out.h"

#include "oxautils/config/configuration.h"
#include "oxautils/resource/analyzer_estimate.h"

#include <dev/device_db.h>

#include <QMap>

/// What the analyzer of `configuration` will take of the part.
OXA_TOOL::AnalyzerAmounts estimateOf(
    const OXA::Configuration& configuration, const DEV::ChipInfo& part);

// Each is false, said on `err`, when the part has too little.

/// Whether the analyzer may fit, as far as an estimate can tell.
bool mayFit(const OXA::Configuration& configuration, const DEV::ChipInfo& part, TextOut& err);
/// Whether a netlist of these cells fits.
bool netlistFits(const QMap<QString, int>& cells, const DEV::ChipInfo& part, TextOut& err);

#endif
