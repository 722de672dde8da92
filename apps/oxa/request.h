#ifndef APPS_OXA_REQUEST_H
#define APPS_OXA_REQUEST_H

#include "options.h"
#include "text_out.h"

#include "oxautils/config/configuration.h"
#include "oxautils/generate/oxa_arg.h"

/// What an analyzer is generated for and from, for commands that generate one.
struct RequestOptions {
    PartOptions part;
    QString ipDir;
};

/// Adds --ip-dir.
void addIpDir(CLI::App& command, RequestOptions& options);

// Each is false, said on `err`, when that fails.

/// Reads the configuration `file`.
bool readConfiguration(const QString& file, OXA::Configuration& configuration, TextOut& err);
/// Whether every signal name stays one word in generated Verilog.
bool namesStayWords(const QString& file, const OXA::Configuration& configuration, TextOut& err);
/// Fills the request to generate `file` for the part.
bool fillRequest(
    const RequestOptions& options, const QString& file, OXA::OxaArg& arg, TextOut& err);
/// Whether the cores are where the request looks for them.
bool hasInstalledCores(const OXA::OxaArg& arg, TextOut& err);

#endif
