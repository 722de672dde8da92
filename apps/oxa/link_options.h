// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_LINK_OPTIONS_H
#define APPS_OXA_LINK_OPTIONS_H

#include "options.h"

#include "oxacapture/target/capture_run.h"

/// Where a chip is when no option says it.
OXA_CAPTURE::ChipAddress usualChip();

/// Adds the options that say where a chip is.
void addLinkOptions(Command& command, OXA_CAPTURE::ChipAddress& chip);

#endif
