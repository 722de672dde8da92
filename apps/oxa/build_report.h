// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_BUILD_REPORT_H
#define APPS_OXA_BUILD_REPORT_H

#include "command.h"
#include "problems.h"

#include "oxautils/generate/build_run.h"

/// The exit status for the end of a build.
int statusOf(OXA::BuildEnd end);

void sayErrors(const QStringList& messages, TextOut& err);

/// Checks the configuration `file`; returns the exit status and prints problems to `err`. `strict`:
/// warnings also fail.
int checkBuild(const OXA::BuildRun& build, const QString& file, const char* doWhat,
    OtherProblems others, TextOut& err);

/// Simulation models of device primitives; empty when they are not installed.
QStringList simulationModels();
bool hasSimulationModels(TextOut& err); ///< prints an error when there are none

/// Sources for other tools.
struct SourceList {
    QStringList files; ///< in order
    QStringList includePaths;
    QStringList defines;
    QStringList boardFiles; ///< for a family of devices; not sources
};

/// Prints on `err` the files written for a board, if any, and what is not known of its device.
void sayBoardFiles(const QStringList& files, TextOut& err);

/// Prints the sources, as a command file with `sayBoardFiles`, or as JSON.
void printSources(const SourceList& sources, bool json, Io& io);

#endif
