// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_SAVE_JOB_H
#define APPS_OXA_EDITOR_WAVE_SAVE_JOB_H

#include "oxa-editor/file_job.h"

#include "oxacapture/files/capture_file.h"

/// Writes captures to files in a separate thread, one at a time. A file whose writing is stopped is
/// not changed.
class SaveJob : public FileJob {
    Q_OBJECT

public:
    using FileJob::FileJob;

    /// Starts writing `capture`, which must not change until `finished`, in the format of the
    /// suffix of `path`. Does nothing while another file is being written.
    void start(const QString& path, const std::shared_ptr<const OXA_CAPTURE::Capture>& capture,
        const OXA_CAPTURE::CaptureFileOptions& options = {});

Q_SIGNALS:
    void finished(const QString& path, const QString& error); ///< empty `error`: written
};

#endif
