// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CAPTURE_SCOPES_H
#define OXACAPTURE_FILES_CAPTURE_SCOPES_H

#include "oxacapture/waveform/vcd_reader.h"

namespace OXA_CAPTURE {

// How a capture looks in a dump; see docs/captures.md.

constexpr size_t kOwnVariables = 3; ///< that a capture's core has behind its data signals

/// The index of the capture's core whose scope this is; -1 for other scopes.
int coreOf(const VcdScope& scope);

/// The end, from `from` on, of the variables in the same scope.
size_t endOfScope(const std::vector<VcdVariable>& variables, size_t from);

/// Whether the scopes are those of a capture's cores.
bool isCapture(const VcdReader& waveform);

}

#endif
