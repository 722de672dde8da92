// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_CAPTURE_RECORD_H
#define APPS_OXA_EDITOR_CAPTURES_CAPTURE_RECORD_H

#include "oxa-editor/core.h"
#include "oxa-editor/wave/waveform.h"

#include "oxacapture/files/capture_result.h"

class WaveSettings;

/// A capture of this session: of a run, or read from a file.
struct CaptureRecord {
    QString time; ///< of the day at which it was captured or read
    QString asked; ///< what the run was to capture
    QString ended; ///< how the run ended
    QString file; ///< where the samples are saved; empty: nowhere
    QString configuration; ///< the file's path; may be empty
    bool isOpened = false; ///< read from a file, else of a run
    bool isUnsaved = false; ///< closing the window would lose the samples
    std::shared_ptr<OXA_CAPTURE::Capture> capture = std::make_shared<OXA_CAPTURE::Capture>();
    std::vector<WaveformPtr> waveforms; ///< of the cores of `capture`
};

using CaptureRecordPtr = std::shared_ptr<CaptureRecord>;

/// The trigger and the windows that a core is to capture, in a line.
QString askedText(const Core& core);

/// Gives the cores of `capture`, which is that of `record` or a copy, their clocks: those that are
/// shown, or that the file had.
void takeClocks(
    const CaptureRecord& record, const WaveSettings& waves, OXA_CAPTURE::Capture& capture);

/// All cores on one axis; null with the reason in `text`, as `jointWaveform`.
WaveformPtr jointWaveform(const CaptureRecord& record, const WaveSettings& waves, QString& text);

/// Reads the capture or waveform `path`. Null, with the reason in `error`, when that fails or
/// `progress` stops it.
CaptureRecordPtr readRecord(
    const QString& path, QString* error, const OXA_CAPTURE::Progress& progress);

#endif
