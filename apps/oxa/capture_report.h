// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_CAPTURE_REPORT_H
#define APPS_OXA_CAPTURE_REPORT_H

#include "command.h"

#include "oxacapture/files/capture_file.h"

/// Where and how a command delivers a capture.
struct CaptureOutput {
    QString file; ///< for the samples; empty: none
    OXA_CAPTURE::CaptureFileOptions options;
    bool gtkw = false; ///< a save file of GTKWave beside it
    bool json = false;
};

/// Adds --bits and --every.
std::vector<Option> addTableFlags(Command& command, OXA_CAPTURE::CaptureFileOptions& options);

/// Adds --output, --bits, --every and --gtkw.
void addCaptureFile(Command& command, CaptureOutput& output);

/// Takes over the names of values beside the configuration `file`.
void addStates(const QString& file, CaptureOutput& output, TextOut& err);

/// Whether the samples can be written to `path`, as far as that is known before; true without one.
bool mayWriteSamples(const CaptureOutput& output, const QString& path, QString* error);

/// Writes the samples to `path`, with all that the options ask for.
bool writeSamples(const CaptureOutput& output, const QString& path,
    const OXA_CAPTURE::Capture& capture, QString* error);

/// Writes `capture` to the file of `output`, if there is one, and prints a summary. A capture
/// without windows does not replace the file. False, with the error on `io.err`, when the file
/// cannot be written.
bool deliver(const CaptureOutput& output, const OXA_CAPTURE::Capture& capture, Io& io);

/// Reports the cores that did not trigger, and their progress; true when all did.
bool reportIdleCores(const OXA_CAPTURE::Capture& capture, TextOut& err);

#endif
