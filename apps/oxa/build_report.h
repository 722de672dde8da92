#ifndef APPS_OXA_BUILD_REPORT_H
#define APPS_OXA_BUILD_REPORT_H

#include "command.h"
#include "problems.h"

#include "oxautils/generate/build_run.h"

/// The exit status for a build that ended so.
int statusOf(OXA::BuildEnd end);

void sayErrors(const QStringList& messages, TextOut& err);

/// Whether the analyzer of `file` can be built: the exit status, with what is wrong on `err`.
/// Without a core there is nothing to `doWhat` ("generate").
int checkBuild(const OXA::BuildRun& build, const QString& file, const char* doWhat,
    OtherProblems others, TextOut& err);

/// Models of what the device has and a simulator has not; empty when they are not installed.
QStringList simulationModels();
bool hasSimulationModels(TextOut& err); ///< says on `err` that there are none

/// What other tools take.
struct SourceList {
    QStringList files; ///< in their order
    QStringList includePaths;
    QStringList defines;
    QStringList boardFiles; ///< no sources, but beside them for a family of devices
};

/// Says on `err` what was written for a board, if anything, and what is not known of its device.
void sayBoardFiles(const QStringList& files, TextOut& err);

/// Prints it, as a command file with `sayBoardFiles`, or as JSON.
void printSources(const SourceList& sources, bool json, Io& io);

#endif
