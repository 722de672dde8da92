#ifndef APPS_OXA_CAPTURE_REPORT_H
#define APPS_OXA_CAPTURE_REPORT_H

#include "command.h"

#include "oxacapture/files/capture_result.h"

/// Writes `capture` to the file `output`, unless that has no name, and prints it. False, said on
/// `io.err`, when the file cannot be written. Without a window the file stays as it was, and that
/// is said there, too.
bool deliver(const QString& output, bool json, const OXA_CAPTURE::Capture& capture, Io& io);

/// Says which cores did not trigger, and how far they got; true when all did.
bool reportIdleCores(const OXA_CAPTURE::Capture& capture, TextOut& err);

#endif
