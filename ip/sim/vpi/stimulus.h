// SPDX-License-Identifier: Apache-2.0
#ifndef IP_SIM_VPI_STIMULUS_H
#define IP_SIM_VPI_STIMULUS_H

#include <fstream>
#include <string>

namespace oxa_target {

/// A step of a stimulus: signals get their values, then clocks change.
struct StimulusStep {
    std::string values; ///< hexadecimal; empty: no change
    std::string clocks; ///< one 0, 1 or x for each clock
};

/// A stimulus file, one line for each step: the values or "-", a space, the clocks.
class Stimulus {
public:
    bool open(const std::string& path);
    void rewind();

    /// False at the end, and before an invalid line.
    bool next(StimulusStep& step);

    long line() const { return m_line; } ///< of the last step, counted from 1
    bool isDamaged() const { return m_damaged; }

private:
    std::ifstream m_file;
    long m_line = 0;
    bool m_damaged = false;
};

}

#endif
