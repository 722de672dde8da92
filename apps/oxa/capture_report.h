// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_CAPTURE_REPORT_H
#define APPS_OXA_CAPTURE_REPORT_H

#include "command.h"

#include "oxacapture/files/capture_result.h"

/// Writes `capture` to the file `output`, unless that is empty, and prints a summary. A capture
/// without windows does not replace the file. False, with the error on `io.err`, when the file
/// cannot be written.
bool deliver(const QString& output, bool json, const OXA_CAPTURE::Capture& capture, Io& io);

/// Reports the cores that did not trigger, and their progress; true when all did.
bool reportIdleCores(const OXA_CAPTURE::Capture& capture, TextOut& err);

#endif
