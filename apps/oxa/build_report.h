#ifndef APPS_OXA_BUILD_REPORT_H
#define APPS_OXA_BUILD_REPORT_H

#include "command.h"

#include "oxautils/generate/build_run.h"

/// The exit status for a build that ended so.
int statusOf(OXA::BuildEnd end);

void sayErrors(const QStringList& messages, TextOut& err);

/// Whether the analyzer of `file` can be built: the exit status, with what is wrong on `err`. With
/// `strict` warnings stop it, too.
int checkBuild(const OXA::BuildRun& build, const QString& file, bool strict, TextOut& err);

/// Models of what the device has and a simulator has not; empty when they are not installed.
QStringList simulationModels();
bool hasSimulationModels(TextOut& err); ///< says on `err` that there are none

/// Prints sources for other tools, as a command file or as JSON: files in their order, then include
/// directories and macros.
void printSources(const QStringList& files, const QStringList& includePaths,
    const QStringList& defines, bool json, Io& io);

#endif
