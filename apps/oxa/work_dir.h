#ifndef APPS_OXA_WORK_DIR_H
#define APPS_OXA_WORK_DIR_H

#include "text_out.h"

#include <QString>

/// Whether the directory `path` holds files, and no mark says that an earlier run made them.
bool holdsForeignFiles(const QString& path);

/// Whether generating may empty the directory `path`: it is not there, is empty, carries the mark
/// of an earlier run, or `force` says so. Otherwise false, said on `err`.
bool mayEmpty(const QString& path, bool force, TextOut& err);

/// Leaves the mark in the directory `path`.
void markWorkDir(const QString& path);

#endif
