// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_SAMPLE_CLOCKS_H
#define APPS_OXA_SAMPLE_CLOCKS_H

#include "options.h"

#include "oxacapture/message.h"

#include <QMap>

/// Frequencies of sample clocks in Hz, by the cores' indexes; those that are not known are not in
/// it.
using ClockFrequencies = QMap<int, double>;

/// Adds --clock.
void addClockOption(Command& command, QStringList& clocks);

/// The frequencies in Hz of the sample clocks of the cores with the indexes `cores`: those of the
/// option, else those of the names beside the configuration `file`. All cores have one or none has,
/// or `messages` tells what is wrong.
ClockFrequencies sampleClocks(const QStringList& clocks, const QString& file,
    const QList<int>& cores, OXA_CAPTURE::Messages& messages);

#endif
