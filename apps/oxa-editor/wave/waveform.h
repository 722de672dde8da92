// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVEFORM_H
#define APPS_OXA_EDITOR_WAVE_WAVEFORM_H

#include "change_index.h"
#include "wave_scale.h"
#include "wave_value.h"

#include "oxacapture/trigger/core_plan.h"

#include <memory>

/// A row of a waveform: the values of a signal, a bus or an event at consecutive samples. Never
/// changes once it is made, so threads may share it.
struct WaveRow {
    QString name;
    bool isEvent = false; ///< of the trigger; unknown values were not computed
    std::shared_ptr<const OXA_CAPTURE::SampleTable> samples;
    int field = 0; ///< of the samples
    int firstBit = 0; ///< in the field, 0 is the most significant
    int width = 1; ///< bits
    ChangeIndex changes; ///< samples with another value than the one before
    std::vector<WaveRow> bits; ///< of a bus
    QString group {}; ///< that it is in until the user moves it; empty: none
    int core = -1; ///< in a waveform of several cores: its core's index
    /// One bit, which is unknown where no sample was taken; null: one was always taken.
    std::shared_ptr<const OXA_CAPTURE::SampleTable> taken {};

    bool isBus() const { return !bits.empty(); }
    /// The name as it is shown below the name of a group: without the core, in the group of the
    /// core.
    QString nameIn(const QString& shownGroup) const;
    OXA_CAPTURE::Logic bitAt(qint64 sample) const { return samples->bit(sample, field, firstBit); }
    WaveValue valueAt(qint64 sample) const;
    bool isTakenAt(qint64 sample) const
    {
        return !taken || taken->bit(sample, 0, 0) != OXA_CAPTURE::Logic::Unknown;
    }
};

/// Consecutive captured samples.
struct WaveWindow {
    qint64 first = 0;
    qint64 samples = 0;
    qint64 trigger = OXA_CAPTURE::kNoSample; ///< in the same count as `first`
    bool isForced = false; ///< the trigger

    /// What is written at the trigger.
    QString triggerText() const;
};

/// The waveform of one core: its signals and the events of its trigger.
struct Waveform {
    qint64 samples = 0;
    std::vector<std::shared_ptr<const WaveRow>> rows; ///< signals, then events
    std::vector<WaveWindow> windows; ///< in the order of their samples
    OXA_CAPTURE::CapturedCore captured; ///< for files
    bool isEven = true; ///< has every sample of a window, with those that were passed over
    bool isCut = false; ///< there are only the samples of windows, not those between them
    /// Of the samples, in units of 10 to the power of `timeExponent` in seconds; null: unknown.
    std::shared_ptr<const std::vector<quint64>> times;
    int timeExponent = 0;
    double clockHz = 0; ///< by the times; 0: unknown
    WavePlaces places; ///< by the times, when the samples are drawn at these
    /// What it shows when that is several cores, whose samples are then the times at which any core
    /// took one; null for one core.
    std::shared_ptr<const OXA_CAPTURE::Capture> joint;

    /// The window that contains `sample`; -1 for none.
    int windowAt(qint64 sample) const;
};

using WaveformPtr = std::shared_ptr<const Waveform>;
using WaveRows = std::vector<std::shared_ptr<const WaveRow>>;

/// The rows of `items`, whose flattened bits are `field` of `samples`.
WaveRows signalRows(const QList<OXA::SignalItem>& items,
    const std::shared_ptr<const OXA_CAPTURE::SampleTable>& samples, int field,
    bool isEvent = false);

/// A captured core's windows, one after the other, with the samples that were passed over as far as
/// there are not too many; a row "stored" then tells them apart. With the `core` that it was
/// captured with (may be null), the matches of those units whose signals are all data signals.
WaveformPtr capturedWaveform(const OXA_CAPTURE::CapturedCore& captured, const OXA::AoCore* core);

/// Adds a row "stored", which is 1 at the stored samples of the windows and unknown outside of
/// them, when the core does not store all. The windows are those of `captured`.
void addStoredRow(Waveform& waveform);

/// The same waveform, in which the triggers of the windows `forced` were forced.
WaveformPtr withForced(const WaveformPtr& waveform, const std::vector<qint64>& forced);

#endif
