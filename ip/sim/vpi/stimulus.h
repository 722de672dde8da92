#ifndef IP_SIM_VPI_STIMULUS_H
#define IP_SIM_VPI_STIMULUS_H

#include <fstream>
#include <string>

namespace oxa_target {

/// A step of a stimulus: the signals take their values, then clocks change.
struct StimulusStep {
    std::string values; ///< hexadecimal; empty when they stay as they are
    std::string clocks; ///< 0, 1 or x each
};

/// A stimulus file, a line a step: the values or "-", a blank, the clocks.
class Stimulus {
public:
    bool open(const std::string& path);
    void rewind();

    /// False at the end, and before a line that is no step.
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
