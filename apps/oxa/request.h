#ifndef APPS_OXA_REQUEST_H
#define APPS_OXA_REQUEST_H

#include "options.h"
#include "text_out.h"

#include "oxautils/generate/oxa_arg.h"

/// What an analyzer is generated for and from, for commands that generate one.
struct RequestOptions {
    PartOptions part;
    QString ipDir;
};

/// Adds --ip-dir.
void addIpDir(CLI::App& command, RequestOptions& options);

// Each is false, said on `err`, when that fails.

/// Fills the request to generate `file` for the part.
bool fillRequest(
    const RequestOptions& options, const QString& file, OXA::OxaArg& arg, TextOut& err);
/// Whether the cores are where the request looks for them.
bool hasInstalledCores(const OXA::OxaArg& arg, TextOut& err);

#endif
