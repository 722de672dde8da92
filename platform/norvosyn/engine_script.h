#ifndef NORVOSYN_ENGINE_SCRIPT_H
#define NORVOSYN_ENGINE_SCRIPT_H

#include <QByteArray>

namespace NorvoSyn {

struct SynthesisRequest;
struct TargetDevice;

/// The engine's script for `request`: its settings, then the flow that all requests share
/// (flow/flow.tcl). Plain ASCII, whatever the paths hold.
QByteArray engineScript(const SynthesisRequest& request, const TargetDevice& target);

}

#endif
