// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_SAMPLER_H
#define OXACAPTURE_FILES_CAPTURE_SAMPLER_H

#include "oxacapture/files/capture_result.h"
#include "oxacapture/message.h"
#include "oxacapture/waveform/waveform_sampler.h"

namespace OXA_CAPTURE {

/// Samples the stimulus `path`: a waveform by its clocks, as `sampleWaveform`; a saved capture
/// without clocks, by its own samples. A capture is a .csv file, a .vcd or .fst file with the
/// signals that tell the samples, all as `writeCapture` writes them; or a sigrok session in which a
/// clock of `requests` is not found.
///
/// The samples of a capture are those of all its windows, one after the other. For each request
/// they come from the first of its cores that has all the signals, by the names in the file.
/// Samples that were not stored are between, as `addPassedOver` adds them. `result` gets the times
/// as far as the file tells them, and for each sample the two edges of its clock; the standard
/// input is never a capture.
///
/// False when the stimulus cannot be read, lacks a signal or a clock's edge, or when requests with
/// the same clock have samples of different times, with all problems in `messages`; or, without a
/// message, when `progress` stopped the work.
OXACAPTURE_EXPORT bool sampleStimulus(const QString& path,
    const std::vector<SampleRequest>& requests, SampledWaveform& result, Messages& messages,
    const Progress& progress = {});

/// Whether `path` is a capture as above, whose samples `sampleStimulus` takes without `clocks`.
/// Reads no more than the head of the file.
OXACAPTURE_EXPORT bool isSampledCapture(const QString& path, const QStringList& clocks);

}

#endif
