#ifndef APPS_OXA_REQUEST_H
#define APPS_OXA_REQUEST_H

#include "options.h"
#include "text_out.h"

#include "oxautils/config/configuration.h"
#include "oxautils/generate/oxa_arg.h"

#include <dev/family_facts.h>

/// What an analyzer is generated for and from, for commands that generate one.
struct RequestOptions {
    PartOptions part;
    QString family; ///< instead of a part
    QString link; ///< of the family; empty for its first
    QString ipDir;
};

/// Adds --part with what belongs to it, --for and --link.
void addTargetOptions(CLI::App& command, RequestOptions& options);
/// Adds --ip-dir.
void addIpDir(CLI::App& command, RequestOptions& options);

// Each is false, said on `err`, when that fails.

/// Reads the configuration `file`.
bool readConfiguration(const QString& file, OXA::Configuration& configuration, TextOut& err);
/// Fills the request to generate `file` for the part or for the family.
bool fillRequest(
    const RequestOptions& options, const QString& file, OXA::OxaArg& arg, TextOut& err);
/// The link that the options choose; null without a family.
bool findLink(const RequestOptions& options, const DEV::FamilyLink*& link, TextOut& err);
/// Whether the cores are where the request looks for them.
bool hasInstalledCores(const OXA::OxaArg& arg, TextOut& err);

#endif
