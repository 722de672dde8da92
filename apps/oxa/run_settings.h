// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_RUN_SETTINGS_H
#define APPS_OXA_RUN_SETTINGS_H

#include "oxacapture/trigger/trigger_setup.h"

#include <QStringList>

/// Settings of one run that replace those of the configuration file.
struct RunSettings {
    QStringList units; ///< "M3=10XR", or "M3=0010..0111" for a range
    QStringList counters; ///< "M3=12"
    qint64 position = -1; ///< samples of a window before its trigger; -1: as in the file
    qint64 windows = 0; ///< of the run; 0: as in the file
    qint64 samples = 0; ///< of a window; 0: as in the file
};

/// Changes match units of `cores`, those that run. Errors are added to `problems`.
void changeUnits(
    const RunSettings& settings, const QList<OXA::AoCore*>& cores, OXA_CAPTURE::Messages& problems);

/// Changes the windows of a core.
void changeWindows(const RunSettings& settings, OXA_CAPTURE::TriggerSetup& setup);

#endif
