// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_CLIENTS_STIMULUS_H
#define IP_SIM_CLIENTS_STIMULUS_H

#include <cstdint>
#include <string>
#include <vector>

namespace oxa_target {

/// A step of a stimulus: signals get their values, then clocks change. The words have 32 bits, the
/// least significant bits first.
struct StimulusStep {
    bool changesValues = false; ///< else `values` is not used
    std::vector<uint32_t> values;
    std::vector<uint32_t> clocks;
    std::vector<uint32_t> unknownClocks; ///< bits of clocks that had no edge yet
};

/// The steps of one command "play" (docs/simulated-target.md).
class Stimulus {
public:
    /// The words of the ports.
    Stimulus(size_t valueWords, size_t clockWords);

    void take(std::string bytes); ///< of whole steps
    bool isOver() const { return m_at == m_bytes.size(); } ///< all steps were taken
    bool next(StimulusStep& step); ///< false when the rest is no step

private:
    bool read(std::vector<uint32_t>& words);

    size_t m_valueWords;
    size_t m_clockWords;
    std::string m_bytes;
    size_t m_at = 0;
};

}

#endif
