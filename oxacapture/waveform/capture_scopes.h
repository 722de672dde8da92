// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_CAPTURE_SCOPES_H
#define OXACAPTURE_WAVEFORM_CAPTURE_SCOPES_H

#include "oxacapture/waveform/vcd_reader.h"

namespace OXA_CAPTURE {

// How a capture looks in a dump; see docs/captures.md.

/// What variables that a capture's core has behind its data signals tell, in their order.
enum class OwnVariable { Sample, Trigger, Window, Forced, Stamp };

/// The index of the capture's core in whose scope a variable is, 0 outside of all scopes; -1 in
/// other scopes.
int coreOf(const VcdReader& waveform, const VcdVariable& variable);

/// The end, from `from` on, of the variables in the same scope.
size_t endOfScope(const std::vector<VcdVariable>& variables, size_t from);

/// The variables that a capture's core has behind its data signals, of those from `from` to `to`;
/// empty when they are not those of such a core.
std::vector<OwnVariable> ownVariables(const VcdReader& waveform, size_t from, size_t to);

/// Whether the scopes are those of a capture's cores, or there is a single core without a scope.
bool isCapture(const VcdReader& waveform);

/// Whether it is a capture without a scope: what `SessionDump` makes of a sigrok session.
bool isSession(const VcdReader& waveform);

}

#endif
