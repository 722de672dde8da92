// SPDX-License-Identifier: Apache-2.0
#include "stimulus.h"

namespace oxa_target {

namespace {

bool isMadeOf(const std::string& text, const char* characters)
{
    return !text.empty() && text.find_first_not_of(characters) == std::string::npos;
}

}

bool Stimulus::open(const std::string& path)
{
    m_file.open(path);
    return m_file.is_open();
}

void Stimulus::rewind()
{
    m_file.clear();
    m_file.seekg(0);
    m_line = 0;
    m_damaged = false;
}

bool Stimulus::next(StimulusStep& step)
{
    std::string text;
    if (m_damaged || !std::getline(m_file, text))
        return false;
    ++m_line;
    const size_t blank = text.find(' ');
    step.values = text.substr(0, blank);
    step.clocks = blank == std::string::npos ? std::string() : text.substr(blank + 1);
    m_damaged = !isMadeOf(step.clocks, "01x")
        || (step.values != "-" && !isMadeOf(step.values, "0123456789abcdef"));
    if (step.values == "-")
        step.values.clear();
    return !m_damaged;
}

}
