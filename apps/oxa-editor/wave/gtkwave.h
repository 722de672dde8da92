#ifndef APPS_OXA_EDITOR_WAVE_GTKWAVE_H
#define APPS_OXA_EDITOR_WAVE_GTKWAVE_H

#include "waveform.h"

/// Starts GTKWave, which goes on by itself, with what was captured, or else with all samples.
/// `clockHz` is the sample clock's frequency, 0 when it is not known. False, with `error`, when it
/// is not installed or there is nothing to show.
bool openInGtkWave(const Waveform& waveform, double clockHz, QString& error);

#endif
