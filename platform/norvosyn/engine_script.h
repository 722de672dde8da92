// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_ENGINE_SCRIPT_H
#define NORVOSYN_ENGINE_SCRIPT_H

#include <QByteArray>

namespace NorvoSyn {

struct SynthesisRequest;
struct TargetDevice;

/// The engine's script for `request`: its settings, then the flow for all requests (flow/flow.tcl).
/// ASCII only, for all paths.
QByteArray engineScript(const SynthesisRequest& request, const TargetDevice& target);

}

#endif
