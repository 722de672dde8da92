// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_WAVEFORM_SAMPLER_H
#define OXACAPTURE_WAVEFORM_WAVEFORM_SAMPLER_H

#include "oxacapture/waveform/sample_table.h"
#include "oxacapture/waveform/vcd_reader.h"

#include <QStringList>

namespace OXA_CAPTURE {

/// What to sample for one core.
struct SampleRequest {
    QString clock; ///< a signal's name, as `SignalFinder` reads it
    bool fallingEdge = false; ///< of the clock; else its rising edge takes samples
    std::vector<QStringList> fields; ///< signal names, most significant first
};

/// A sample clock's change of level.
struct ClockEdge {
    quint16 clock; ///< its place in `SampledWaveform::clocks`
    bool level; ///< the new one
    bool sameTime; ///< as the edge before
};

/// A waveform as cores sample it.
struct SampledWaveform {
    std::vector<SampleTable> cores; ///< in the order of the requests
    std::vector<std::vector<quint64>> times; ///< of the samples of each of these, in time units
    std::optional<int> timeExponent; ///< a time unit is 10 to the power of this, in seconds
    QStringList clocks; ///< the names of the sample clocks, each once
    std::vector<ClockEdge> edges; ///< of all clocks, in time
};

/// Samples the waveform in the file `path`, of any kind that `VcdReader` reads.
///
/// A sample contains the values just before an active edge of its clock, as a register would store
/// them: what changes at the same time as the clock belongs to the next sample. An edge is a change
/// between 0 and 1; an unknown value between them does not add one, and a clock's first logic level
/// is not an edge. Values that are unknown or float are unknown.
///
/// False when the waveform cannot be read or lacks a signal or a clock's edge, with all problems in
/// `messages`; or, without a message, when `progress` stopped the work.
OXACAPTURE_EXPORT bool sampleWaveform(const QString& path,
    const std::vector<SampleRequest>& requests, SampledWaveform& result, Messages& messages,
    const Progress& progress = {});

}

#endif
