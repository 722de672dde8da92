#ifndef OXAUTILS_GENERATE_TEMPLATE_FILES_H
#define OXAUTILS_GENERATE_TEMPLATE_FILES_H

#include "oxautils/config/configuration.h"
#include "oxautils/generate/oxa_arg.h"

namespace OXA {

/// Writes a module that instantiates the wrapper of `configuration` and has vectors under readable
/// names for its ports, and the same as a component of VHDL, each with an instance to paste. False,
/// with a critical message, when a file cannot be written.
bool writeTemplates(const OxaArg& arg, const Configuration& configuration);

}

#endif
