// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_PROBE_H
#define OXACAPTURE_TARGET_PROBE_H

#include "oxacapture/target/capture_run.h"
#include "oxautils/generate/remembered_builds.h"

namespace OXA_CAPTURE {

/// What a target tells about a core's sample clock. Cores have no counter of its edges; both limits
/// hold also when TCK pauses between scans.
struct ProbedClock {
    /// Whether it has edges.
    enum State {
        Unknown, ///< of a Lite core that takes no samples
        Standing, ///< it had fewer than three edges within `kStandingTime`
        Running, ///< it had three edges
    };
    State state = Unknown; ///< within limits of time
    double leastHz = 0; ///< its frequency is at least this; 0: not known
    double mostOfTck = 0; ///< its frequency is less than that of TCK times this; 0: not known
};

constexpr int kStandingTime = 500; ///< ms

/// A core in a target.
struct ProbedCore {
    CoreIdentity identity; ///< its shape
    quint32 fingerprint = 0; ///< of the configuration that it was built from
    OXA::NameSums names; ///< empty when it was built without them
    CoreStatus status; ///< when it was read
    ProbedClock clock; ///< its sample clock
};

/// A device of the chain, or a serial port.
struct ProbedDevice {
    QString name; ///< in OpenOCD's configuration; of a serial port its device
    QString idCode; ///< "0x10a0affd"; empty without one
    QString instruction; ///< that selects the analyzer: "0x08"; empty when none was tried
    std::vector<ProbedCore> cores; ///< of its analyzer; empty without one
    QString error; ///< why it was not found or not read; else empty
    /// For each configuration how the analyzer differs from it: empty for the one that fits.
    QStringList differences;
    QList<OXA::RememberedBuild> remembered; ///< the analyzer's on this computer
};

/// Finds what is there. Cores that are armed stay armed.
///
/// Tries the devices that may have an analyzer (`OpenOcdLink::candidates`), or only `chip.tap`.
/// Ends early when `goesOn`, which is called repeatedly, returns false. False, with `error`, when
/// the server or the port cannot be used.
OXACAPTURE_EXPORT bool probe(const ChipAddress& chip,
    const std::vector<std::vector<BuiltConfiguration>>& configurations,
    const std::function<bool()>& goesOn, std::vector<ProbedDevice>& devices, QString* error);

}

#endif
