// SPDX-License-Identifier: Apache-2.0
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

/// The module that connects the wrapper qx_oxa to the ports and to the target's clients. Its clocks
/// are unknown until their first edge: an initial logic level would be an edge for a core that is
/// armed from power-up on.
QByteArray testbench(const StimulusPorts& ports);

/// The same module without ports, around `analyzer`: an instance u_oxa of qx_oxa and what it needs
/// beside the pads, which are nets of this module under the names of its ports.
QByteArray testbench(const QByteArray& analyzer);

/// Writes the waveform's steps to the file `path`: before every change of clocks the values that
/// the cores sample at it. Clocks are in the waveform's order. Before the waveform, there are
/// `leadIn` periods of all clocks, after it `leadOut`. Unknown values are 0.
///
/// Returns the number of steps, with two for each of these periods; -1, with `error`, on failure.
qint64 writeStimulus(const QString& path, const StimulusPorts& ports, int leadIn, int leadOut,
    const SampledWaveform& waveform, const std::vector<SampleRequest>& requests, QString* error);

}

#endif
