// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_TEMPLATE_FILES_H
#define OXAUTILS_GENERATE_TEMPLATE_FILES_H

#include "oxautils/config/configuration.h"
#include "oxautils/generate/oxa_arg.h"

namespace OXA {

/// Writes a module that instantiates the wrapper of `configuration` and has vectors with readable
/// names as ports, and the same as a VHDL component, each with an instance to copy. False, with a
/// critical message, when a file cannot be written.
bool writeTemplates(const OxaArg& arg, const Configuration& configuration);

}

#endif
