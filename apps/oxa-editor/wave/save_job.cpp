// SPDX-License-Identifier: Apache-2.0
#include "save_job.h"

void SaveJob::start(const QString& path, const std::shared_ptr<const OXA_CAPTURE::Capture>& capture,
    const OXA_CAPTURE::CaptureFileOptions& options)
{
    if (isRunning())
        return;
    auto error = std::make_shared<QString>();
    const auto write = [=](const OXA_CAPTURE::Progress& goesOn) {
        OXA_CAPTURE::writeCapture(path, *capture, options, error.get(), goesOn);
    };
    run(path, write, [=] { Q_EMIT finished(path, *error); });
}
