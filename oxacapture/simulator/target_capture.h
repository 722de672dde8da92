// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_TARGET_CAPTURE_H
#define OXACAPTURE_SIMULATOR_TARGET_CAPTURE_H

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/target/capture_session.h"

namespace OXA_CAPTURE {

/// Captures with the cores of a simulated target from a waveform, through its JTAG pads.
class TargetCapture {
public:
    /// The cores in the order of their positions, with what they sample of the waveform.
    TargetCapture(SimulatedTarget& target, const std::vector<CorePlan>& cores,
        const SampledWaveform& waveform);

    /// Finds the cores; fails for cores other than those generated into `generatedDir`.
    bool begin(const QString& generatedDir);

    /// The warning for a netlist without sums of names; else empty.
    QString namesWarning() const { return m_session.namesWarning(); }

    /// Arms the cores, plays `steps` steps of the stimulus, forces the triggers at sample `forceAt`
    /// of each core, and stops the cores before the `leadOut` steps that follow. With a `leadIn`,
    /// cores that are armed from power-up on are stopped before these first steps, and armed with
    /// settings of the configuration.
    bool run(qint64 leadIn, qint64 steps, qint64 leadOut, qint64 forceAt, const Progress& progress);

    /// Reads a core and finds its windows in the waveform, searching first at `expected`.
    bool read(size_t core, const std::vector<Window>& expected, ModelRun& captured);

    /// Why the last call failed; empty when `progress` stopped it.
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);
    bool failAt(size_t core, const QString& error);
    bool arm(qint64 leadIn);
    bool play(qint64 steps);
    bool locate(
        size_t core, const DecodedWindow& window, qint64 earliest, qint64 guess, Window& place);

    SimulatedTarget& m_target;
    CaptureSession m_session;
    const std::vector<CorePlan>& m_cores;
    const SampledWaveform& m_waveform;
    Progress m_progress;
    qint64 m_played = 0;
    qint64 m_toPlay = 0;
    QString m_error;
};

}

#endif
