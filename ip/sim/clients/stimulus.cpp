// SPDX-License-Identifier: Apache-2.0
#include "stimulus.h"

#include <cstring>

namespace oxa_target {

Stimulus::Stimulus(size_t valueWords, size_t clockWords)
    : m_valueWords(valueWords)
    , m_clockWords(clockWords)
{
}

void Stimulus::take(std::string bytes)
{
    m_bytes = std::move(bytes);
    m_at = 0;
}

bool Stimulus::next(StimulusStep& step)
{
    if (isOver())
        return false;
    step.changesValues = m_bytes[m_at++] != 0;
    step.values.resize(m_valueWords);
    step.clocks.resize(m_clockWords);
    step.unknownClocks.resize(m_clockWords);
    return (!step.changesValues || read(step.values)) && read(step.clocks)
        && read(step.unknownClocks);
}

bool Stimulus::read(std::vector<uint32_t>& words)
{
    const size_t bytes = words.size() * sizeof words[0];
    if (bytes > m_bytes.size() - m_at)
        return false;
    std::memcpy(words.data(), m_bytes.data() + m_at, bytes);
    m_at += bytes;
    return true;
}

}
