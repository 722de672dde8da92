// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_CODE_SLOTS_H
#define OXACAPTURE_WAVEFORM_CODE_SLOTS_H

#include <cstddef>
#include <vector>

namespace OXA_CAPTURE {

/// What belongs to each watched identifier code of a waveform, in the order in which the codes were
/// asked for first. `VcdReader::readChanges` takes `codes` and tells the slots' numbers.
template <typename Slot> class CodeSlots {
public:
    /// The slot of `code`, a new one at the first time.
    Slot& of(int code)
    {
        if (size_t(code) >= m_slotOfCode.size())
            m_slotOfCode.resize(size_t(code) + 1, -1);
        int& slot = m_slotOfCode[size_t(code)];
        if (slot < 0) {
            slot = int(m_slots.size());
            m_slots.emplace_back();
            m_codes.push_back(code);
        }
        return m_slots[size_t(slot)];
    }

    Slot& operator[](int slot) { return m_slots[size_t(slot)]; }
    const std::vector<int>& codes() const { return m_codes; } ///< by slot

private:
    std::vector<int> m_codes;
    std::vector<int> m_slotOfCode;
    std::vector<Slot> m_slots;
};

}

#endif
