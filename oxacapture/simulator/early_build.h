// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_EARLY_BUILD_H
#define OXACAPTURE_SIMULATOR_EARLY_BUILD_H

#include "oxacapture/simulator/simulation.h"

#include <atomic>
#include <future>

namespace OXA_CAPTURE {

/// Compiles the Verilog of a simulation with Verilator while its waveform is still being read.
class OXACAPTURE_EXPORT EarlyBuild {
public:
    /// Begins, when `simulation` takes Verilator or will probably do so for a waveform file of
    /// `bytes` bytes. Only `goesOn`, `progress` and `warn` of `simulation` may change afterwards.
    EarlyBuild(const Simulation& simulation, const std::vector<CorePlan>& cores, qint64 bytes);
    /// Stops the compilation.
    ~EarlyBuild();
    EarlyBuild(const EarlyBuild&) = delete;
    EarlyBuild& operator=(const EarlyBuild&) = delete;

    /// Whether it has begun and was not stopped.
    bool isBegun() const { return m_built.valid(); }

    /// Waits for its end, with calls of `goesOn`. False when the compilation failed, with `error`,
    /// or when `goesOn` returned false.
    bool finish(const std::function<bool()>& goesOn, QString* error);
    void stop(); ///< ends the compilation, if one has begun

    /// What is built; not to be used between the beginning and the end.
    SimulatedTarget& target() { return m_target; }

private:
    std::atomic<bool> m_stopped {false};
    SimulatedTarget m_target;
    QString m_error;
    std::future<bool> m_built;
};

}

#endif
