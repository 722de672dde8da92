// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TRIGGER_STORAGE_MODEL_H
#define OXACAPTURE_TRIGGER_STORAGE_MODEL_H

#include "oxacapture/trigger/trigger_setup.h"

namespace OXA_CAPTURE {

/// Which samples a core stores, sample by sample.
///
/// Besides those that the setup asks for, the first of a run and of each window, and any sample
/// whose gap, the samples passed over in front of it, would not fit its bits.
class StorageModel {
public:
    /// Before the first sample of a run.
    explicit StorageModel(const StorageSetup& setup)
        : m_setup(setup)
    {
    }

    bool all() const { return m_setup.all(); } ///< every sample is stored
    /// Whether `take` needs the outputs of the units.
    bool needsOutputs() const { return m_setup.keep == OXA::CoreStorage::When; }

    /// Whether the next sample is stored. `value` and `before` have the data signals of this and of
    /// the previous sample, in `words` words; `outputs` the units' outputs at it; `always` stores
    /// it in any case.
    bool take(const quint64* value, const quint64* before, int words, quint32 outputs, bool always);

    void endWindow() { m_starts = true; } ///< behind the sample taken last

private:
    StorageSetup m_setup;
    qint64 m_passed = 0; ///< samples since the one stored last
    bool m_starts = true; ///< the next sample is the first of a window
};

}

#endif
