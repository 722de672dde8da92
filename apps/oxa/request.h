// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_REQUEST_H
#define APPS_OXA_REQUEST_H

#include "options.h"
#include "text_out.h"

#include "oxautils/config/configuration.h"
#include "oxautils/generate/oxa_arg.h"
#include "oxautils/generate/remembered_builds.h"
#include "oxautils/generate/uart_defines.h"

#include <dev/family_facts.h>

/// Input files of the commands that generate an analyzer.
struct RequestOptions {
    PartOptions part;
    QString family; ///< instead of a part
    QString link; ///< of the family; empty for its first
    OXA::UartRates uart; ///< of its UART link
    QString ipDir;
};

/// Adds --part with what belongs to it, --for and --link with what belongs to them.
void addTargetOptions(Command& command, RequestOptions& options);
/// Adds --ip-dir.
void addIpDir(Command& command, RequestOptions& options);

/// How a build of the request is remembered.
OXA::RememberedBuild rememberedAs(const RequestOptions& options, const OXA::OxaArg& arg);

// On failure, each returns false with the error on `err`.

/// Reads the configuration `file`.
bool readConfiguration(const QString& file, OXA::Configuration& configuration, TextOut& err);
/// Fills the request to generate `file` for the part or for the family.
bool fillRequest(
    const RequestOptions& options, const QString& file, OXA::OxaArg& arg, TextOut& err);
/// The link that the options choose; null without a family.
bool findLink(const RequestOptions& options, const DEV::FamilyLink*& link, TextOut& err);
/// Whether the request's directory contains the cores.
bool hasInstalledCores(const OXA::OxaArg& arg, TextOut& err);

#endif
