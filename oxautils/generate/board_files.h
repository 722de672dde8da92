// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_BOARD_FILES_H
#define OXAUTILS_GENERATE_BOARD_FILES_H

#include "oxautils/generate/build_run.h"

#include <dev/family_facts.h>

namespace OXA {

/// Copies what `link` takes from the installed cores into the directory "board" of the work
/// directory of `arg`, and lists it in `result`. False, with `error`, when a file cannot be read or
/// written.
bool copyBoardFiles(
    const OxaArg& arg, const DEV::FamilyLink& link, BuildResult& result, QString* error);

}

#endif
