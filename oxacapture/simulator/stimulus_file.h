#ifndef OXACAPTURE_SIMULATOR_STIMULUS_FILE_H
#define OXACAPTURE_SIMULATOR_STIMULUS_FILE_H

#include "oxacapture/waveform/waveform_sampler.h"

#include <QByteArray>
#include <QStringList>

namespace OXA_CAPTURE {

/// The ports of a generated wrapper, as a simulation drives them.
struct StimulusPorts {
    QStringList values; ///< data and trigger signals, the first the most significant
    QStringList clocks; ///< sample clocks, the first the least significant
};

/// The module that puts the wrapper qx_oxa between the ports and the target's clients. Its clocks
/// are unknown until their first edge: a level to begin with would be an edge to a core that is
/// armed from power-up on.
QByteArray testbench(const StimulusPorts& ports);

/// Writes the waveform's steps to the file `path`: before every change of clocks the values that
/// the cores sample at it. Clocks are in the waveform's order. In front of the waveform come
/// `leadIn` periods of all clocks and behind it `leadOut`. Unknown values are 0.
///
/// The number of steps, two for each of these periods included; -1, with `error`, when it fails.
qint64 writeStimulus(const QString& path, const StimulusPorts& ports, int leadIn, int leadOut,
    const SampledWaveform& waveform, const std::vector<SampleRequest>& requests, QString& error);

}

#endif
