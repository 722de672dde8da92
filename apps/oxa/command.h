// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_COMMAND_H
#define APPS_OXA_COMMAND_H

#include "options.h"
#include "text_out.h"

/// Exit statuses, the same for every command.
enum ExitStatus : int {
    kDone = 0,
    kJobFailed = 1, ///< synthesis failed, the file is invalid, a supply is shorted
    kUnusable = 2, ///< the call or an input file is unusable
};

/// Output of a command: results to `out`, diagnostics to `err`.
struct Io {
    TextOut& out;
    TextOut& err;
};

// Each adds its command to `app`. When the user calls that command, it sets `status`.
void addAdd(CLI::App& app, Io& io, int& status);
void addAttach(CLI::App& app, Io& io, int& status);
void addCapture(CLI::App& app, Io& io, int& status);
void addCheck(CLI::App& app, Io& io, int& status);
void addConvert(CLI::App& app, Io& io, int& status);
void addDevices(CLI::App& app, Io& io, int& status);
void addEstimate(CLI::App& app, Io& io, int& status);
void addGenerate(CLI::App& app, Io& io, int& status);
void addNew(CLI::App& app, Io& io, int& status);
void addProbe(CLI::App& app, Io& io, int& status);
void addSet(CLI::App& app, Io& io, int& status);
void addShow(CLI::App& app, Io& io, int& status);
void addSignals(CLI::App& app, Io& io, int& status);
void addSimulate(CLI::App& app, Io& io, int& status);
void addTarget(CLI::App& app, Io& io, int& status);
void addVoltage(CLI::App& app, Io& io, int& status);

#endif
