// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_SAMPLER_H
#define OXACAPTURE_FILES_CAPTURE_SAMPLER_H

#include "oxacapture/files/capture_result.h"
#include "oxacapture/message.h"
#include "oxacapture/waveform/waveform_sampler.h"

namespace OXA_CAPTURE {

/// Whether `path` is a capture as `writeCapture` writes it: a .csv file, or a .vcd or .fst file
/// with the signals that tell the samples. Reads no more than the head of the file.
OXACAPTURE_EXPORT bool isCaptureFile(const QString& path);

/// Takes the samples of a core from the saved capture `path`, without a clock: they are those that
/// were captured, the windows one after the other. They come from the first of the capture's cores
/// that has all signals of `request`, by the names in the file. Samples that were not stored are
/// between, as `addPassedOver` adds them. `result` gets one core and no
/// edges; its times as far as the file tells them.
///
/// False when the file cannot be read or lacks a signal, with all problems in `messages`; or,
/// without a message, when `progress` stopped the work.
OXACAPTURE_EXPORT bool sampleCapture(const QString& path, const SampleRequest& request,
    SampledWaveform& result, Messages& messages, const Progress& progress = {});

}

#endif
