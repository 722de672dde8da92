// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_OPEN_JOB_H
#define APPS_OXA_EDITOR_CAPTURES_OPEN_JOB_H

#include "capture_record.h"

#include "oxa-editor/file_job.h"

/// Reads captures from files in a separate thread, one after the other.
class OpenJob : public FileJob {
    Q_OBJECT

public:
    using FileJob::FileJob;

    /// Reads `path` behind those that were asked for before.
    void start(const QString& path);

    /// Stops reading, and drops the files that wait. `finished` follows.
    void stop();

Q_SIGNALS:
    void finished(const CaptureRecordPtr& record, const QString& path,
        const QString& error); ///< `record`: null with an error

private:
    void startNext();

    QStringList m_waiting;
};

#endif
