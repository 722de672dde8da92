#ifndef APPS_OXA_SIMULATED_CORE_H
#define APPS_OXA_SIMULATED_CORE_H

#include "capture/trigger_setup.h"

/// A core of a configuration with what it samples and looks for; one of the two is not null.
struct SimulatedCore {
    const OXA::AoCore* core = nullptr;
    const OXA::AOCore_Lite* lite = nullptr;
    OXA_CAPTURE::SampleRequest request;
    OXA_CAPTURE::TriggerSetup setup; ///< of a Standard core

    int index() const { return core ? core->index : lite->index; }
    QList<OXA::SignalItem> items() const { return core ? core->captureSignals : lite->signalList; }
    QString name() const { return QString("core %1").arg(index()); }
};

#endif
