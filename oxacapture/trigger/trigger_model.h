// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TRIGGER_TRIGGER_MODEL_H
#define OXACAPTURE_TRIGGER_TRIGGER_MODEL_H

#include "oxacapture/trigger/storage_model.h"
#include "oxacapture/waveform/sample_table.h"

#include <deque>
#include <optional>

namespace OXA_CAPTURE {

constexpr qint64 kNoSample = -1; ///< stands for the number of a sample that is not there

/// Samples that a core stores, by their numbers in what it samples.
struct OXACAPTURE_EXPORT Window {
    qint64 firstSample = 0; ///< number of its first sample
    qint64 samples = 0; ///< stored so far
    qint64 triggerSample = kNoSample; ///< none in a Lite core
    /// The numbers of the stored samples, ascending and counted from `firstSample`; empty: they are
    /// consecutive.
    std::vector<qint64> stored {};
    bool forced = false; ///< a trigger of another core was seen at its trigger sample
    /// Of a core with stamps: the number of its trigger sample in the run, modulo 2^32.
    std::optional<quint32> stamp {};

    /// The number, counted from `firstSample`, of stored sample `index`; after the last one, of the
    /// sample behind it, and so on.
    qint64 offset(qint64 index) const;
    qint64 span() const { return offset(samples); } ///< samples from its first to its last one
    /// Which of the stored samples is the trigger sample; `kNoSample` without one.
    qint64 triggerIndex() const;
};

/// What happens at one sample. Bit k of a mask is for unit k.
struct SampleEvents {
    bool armed = false; ///< the core waits for a trigger; else the masks and `reached` are 0
    quint32 matches = 0; ///< units that match
    quint32 outputs = 0; ///< units whose outputs are true, after their counters
    bool satisfied = false; ///< the expression of the level `reached` before this sample
    int reached = 0; ///< expressions of the sequence satisfied, this sample included
    bool trigger = false; ///< it is a trigger sample
    bool own = false; ///< and would be one without the triggers of other cores
    bool captured = false; ///< the sample is at or after a trigger, within its window
};

/// How far a run got.
struct TriggerProgress {
    int reached = 0; ///< expressions of the sequence satisfied since the last arming
    std::vector<qint64> matches; ///< of every unit of the setup, while armed
    std::vector<qint64> firstUnknown; ///< sample at which a unit first compared an unknown bit
};

/// What a core does, sample by sample. The tests compare the hardware with this model.
///
/// The core is armed before its first sample. Every unit compares its port's value with its
/// registers, and for edges with the previous sample; the very first sample has no edges. With a
/// counter, the output is true at the match that completes the count. The expressions of the
/// sequence are satisfied one after the other, each at a later sample than the one before; the
/// last one's sample is the trigger sample. The window then takes its other samples; it has fewer
/// before an early trigger. After its last sample, counters and sequence restart. Windows consist
/// of the samples that are stored (`StorageModel`), and the trigger sample, which always is.
class OXACAPTURE_EXPORT TriggerModel {
public:
    /// `setup` and samples of `layout` have to belong together.
    TriggerModel(TriggerSetup setup, const SampleLayout& layout);

    /// Takes the next sample; a client's `force` or another core's `pulse` makes it the trigger
    /// sample unless a window is open.
    SampleEvents take(const quint64* row, bool force = false, bool pulse = false);

    /// The core is stopped behind the sample taken last.
    void stop();

    /// The windows so far; an incomplete one has the samples taken.
    const std::vector<Window>& windows() const { return m_windows; }
    bool finished() const { return m_state == Finished; } ///< all windows are complete
    const TriggerProgress& progress() const { return m_progress; } ///< so far

private:
    enum State { Armed, Open, Finished };

    quint32 compareUnits(const quint64* row);
    quint32 countMatches(quint32 matches);
    bool advance(quint32 outputs, SampleEvents& events);
    void openWindow(bool forced);
    void store(qint64 sample);
    void closeFullWindow(bool atLimit);

    TriggerSetup m_setup;
    SampleLayout m_layout;
    State m_state = Armed;
    qint64 m_sample = 0; ///< the one being taken
    qint64 m_armedAt = 0;
    StorageModel m_storage;
    std::deque<qint64> m_stored; ///< those stored last while it waits, unless it stores all
    bool m_isStored = false; ///< the sample taken last
    std::vector<quint64> m_previous;
    std::vector<qint64> m_counts; ///< matches of each unit towards its next output
    std::vector<Window> m_windows;
    TriggerProgress m_progress;
};

/// What a model run yields.
struct ModelRun {
    std::vector<Window> windows; ///< in the order in which they were taken
    TriggerProgress progress; ///< how far the last window's sequence got
    std::vector<SampleEvents> events; ///< one for each sample, when requested
    std::vector<qint64> pulses {}; ///< samples at which a trigger of another core was seen
};

/// Runs all of `samples`; sample `forceAt` is forced to be a trigger sample (`kNoSample`: none).
OXACAPTURE_EXPORT ModelRun runModel(const TriggerSetup& setup, const SampleTable& samples,
    qint64 forceAt = kNoSample, bool withEvents = false);

/// What a Lite core captures of `samples`: the first ones, without a trigger.
OXACAPTURE_EXPORT ModelRun runModel(const OXA::AOCore_Lite& core, const SampleTable& samples);

/// Whether the windows would differ if unknown bits counted as 1. `pulses` are those of the run.
OXACAPTURE_EXPORT bool dependsOnUnknown(const TriggerSetup& setup, const SampleTable& samples,
    qint64 forceAt = kNoSample, const std::vector<qint64>& pulses = {});

/// The largest number of matches that a core's hardware counts for each unit.
constexpr qint64 kCountedMatches = 255;

/// "M0 matched 12 times", for users.
OXACAPTURE_EXPORT QString matchesText(int unit, qint64 matches);

/// How far a core without a trigger got, for users: "level 1 of 3 reached, M0 matched 12 times".
OXACAPTURE_EXPORT QString progressText(const TriggerSetup& setup, const TriggerProgress& progress);

}

#endif
