// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_PROBLEM_LOCATION_H
#define APPS_OXA_EDITOR_PROBLEM_LOCATION_H

#include "commands.h"

#include "oxautils/check/check.h"

/// The page, and the item on it, where the user can correct `problem` of one of `cores`. Without a
/// core for a problem of the whole configuration.
Location locationOf(const OXA::Problem& problem, const Cores& cores);

#endif
