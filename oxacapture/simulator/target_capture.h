// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_TARGET_CAPTURE_H
#define OXACAPTURE_SIMULATOR_TARGET_CAPTURE_H

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/target/capture_session.h"

namespace OXA_CAPTURE {

/// How much of a stimulus is played.
struct PlayedSteps {
    qint64 leadIn = 0; ///< in front of the waveform
    qint64 waveform = 0; ///< of the waveform, at most
    qint64 expected = 0; ///< of the waveform, after which all cores are expected to have finished
    qint64 leadOut = 0; ///< behind the waveform
};

/// The step of the waveform at which sample `sample` of `request` is taken; -1 past the last one.
qint64 stepOfSample(const SampledWaveform& waveform, const SampleRequest& request, qint64 sample);

/// Captures with the cores of a simulated target from a waveform, through its JTAG pads.
class TargetCapture {
public:
    /// The cores as they are `built`, and as they run in `cores`, in the order of their positions,
    /// with what they sample of the waveform.
    TargetCapture(SimulatedTarget& target, const std::vector<CorePlan>& built,
        const std::vector<CorePlan>& cores, const SampledWaveform& waveform);

    /// Finds the cores; fails for cores other than those generated into `generatedDir`.
    bool begin(const QString& generatedDir);

    /// The warning for a netlist without sums of names; else empty.
    QString namesWarning() const { return m_session.namesWarning(); }

    /// Arms the cores, plays the waveform until all have finished, and forces the triggers at
    /// sample `forceAt` of each core. At the waveform's end it stops the cores, and plays the steps
    /// behind. With steps in front of the waveform, cores that are armed from power-up on are
    /// stopped before these, and armed with settings of the configuration.
    bool run(const PlayedSteps& steps, qint64 forceAt, const Progress& progress);

    /// Reads a core and finds its windows in the waveform, searching first at `expected`.
    bool read(size_t core, const std::vector<Window>& expected, ModelRun& captured);

    /// Why the last call failed; empty when `progress` stopped it.
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);
    bool failAt(size_t core, const QString& error);
    bool arm(qint64 leadIn);
    bool play(qint64 steps);
    bool playTo(qint64 step);
    bool playUntilFinished(bool& finished);
    bool haveFinished(bool& finished);
    bool locate(size_t core, const DecodedWindow& window, qint64 earliest, Window& place);

    SimulatedTarget& m_target;
    CaptureSession m_session;
    const std::vector<CorePlan>& m_built;
    const std::vector<CorePlan>& m_cores;
    const SampledWaveform& m_waveform;
    Progress m_progress;
    PlayedSteps m_steps;
    qint64 m_played = 0;
    qint64 m_toPlay = 0; // as far as is known
    QString m_error;
};

}

#endif
