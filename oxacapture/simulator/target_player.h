// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_TARGET_PLAYER_H
#define OXACAPTURE_SIMULATOR_TARGET_PLAYER_H

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/trigger/core_plan.h"

#include <QElapsedTimer>

namespace OXA_CAPTURE {

/// The nets of `cores` that a player looks at.
QStringList playerNets(const std::vector<CorePlan>& cores);

/// Plays a waveform to a simulated target that other programs arm.
///
/// The waveform begins shortly after a core was armed. After its end the clocks stop, except for
/// the few edges that stopped cores need to be at rest; or the waveform is repeated, and continues
/// where it was when a core is armed again. It is played only while a core waits for a clock.
class OXACAPTURE_EXPORT TargetPlayer {
public:
    /// `target` was made by buildTarget for `cores`, with as many steps. With `loop` the waveform
    /// is repeated.
    TargetPlayer(
        SimulatedTarget& target, qint64 steps, bool loop, const std::vector<CorePlan>& cores);

    /// Plays what is due, and then waits briefly. False when the target fails.
    bool step();

private:
    struct Cores {
        std::vector<bool> armed;
        bool busy = false; ///< one of them waits for its clock
        bool stopping = false; ///< one of those is no longer armed
        bool anew = false; ///< one was armed since the previous call, and no other one runs
    };

    bool look(Cores& cores);
    bool begin(const Cores& now);
    bool playOn(const Cores& now);
    bool play(qint64 end);
    void rewind();

    SimulatedTarget& m_target;
    qint64 m_steps;
    qint64 m_end; // of the waveform
    bool m_loop;
    QElapsedTimer m_active; // since a core was busy
    QStringList m_names; // of the nets with the cores' states
    Cores m_before;
    bool m_playing = false;
    qint64 m_at = 0; // the next step
};

}

#endif
