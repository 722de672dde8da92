#include "capture/trigger_setup.h"

namespace OXA_CAPTURE {

SampleRequest sampleRequest(const OXA::AoCore& core)
{
    // Forcing the trigger by the falling edge takes the samples there too.
    SampleRequest request {
        core.sampleClock, core.trigType == 1 || core.forceTriggerByFallingEdge, {}};
    request.fields.push_back(core.dataSignals());
    for (const OXA::TriggerPort* port : core.availableTriggers())
        request.fields.push_back(port->singleSignals());
    return request;
}

SampleRequest sampleRequest(const OXA::AOCore_Lite& core)
{
    return {core.sampleClock, core.trigType == 1, {core.dataSignals()}};
}

}
