#ifndef OXACAPTURE_SIMULATOR_TARGET_PLAYER_H
#define OXACAPTURE_SIMULATOR_TARGET_PLAYER_H

#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/trigger/core_plan.h"

namespace OXA_CAPTURE {

/// Plays a waveform to a simulated target that others arm.
///
/// A moment after a core was armed the waveform begins. Behind its end the clocks stand still,
/// until cores that are stopped need a few edges more to come to rest; or it begins again, and goes
/// on where it was at the next arming. While nothing waits for a clock, nothing is played.
class OXACAPTURE_EXPORT TargetPlayer {
public:
    /// `target` was made by buildTarget for `cores`, with as many steps. With `loop` the waveform
    /// begins again behind its end.
    TargetPlayer(
        SimulatedTarget& target, qint64 steps, bool loop, const std::vector<CorePlan>& cores);

    /// Does what is to be done now, and then waits a moment. False when the target fails.
    bool step();

private:
    struct Cores {
        std::vector<bool> armed;
        bool busy = false; ///< one of them waits for its clock
        bool stopping = false; ///< one of those is not armed any more
        bool anew = false; ///< one was armed since the look before, and no other one runs
    };

    bool look(Cores& cores);
    bool begin(const Cores& now);
    bool playOn(const Cores& now);
    bool play(qint64 end);
    bool rewind();

    SimulatedTarget& m_target;
    qint64 m_steps;
    qint64 m_end; // of the waveform
    bool m_loop;
    QStringList m_names; // of what tells the cores' states
    Cores m_before;
    bool m_playing = false;
    qint64 m_at = 0; // the next step
};

}

#endif
