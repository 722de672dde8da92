// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/vcd_tokens.h"

#include "oxacapture/waveform/waveform_input.h"

#include <cstring>

namespace OXA_CAPTURE {

namespace {

constexpr size_t kBufferSize = size_t(1) << 20;

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}

VcdTokens::VcdTokens(WaveformInput& input)
    : m_input(input)
    , m_buffer(kBufferSize)
{
}

bool VcdTokens::next(std::string_view& word)
{
    if (m_failed || !skipBlanks())
        return false;
    m_start = m_at;
    do {
        while (m_at < m_end && !isBlank(m_buffer[m_at]))
            ++m_at;
    } while (m_at == m_end && refill());
    if (m_failed)
        return false;
    word = {m_buffer.data() + m_start, m_at - m_start};
    m_start = m_at;
    return true;
}

bool VcdTokens::skipBlanks()
{
    do {
        for (; m_at < m_end; ++m_at) {
            if (m_buffer[m_at] == '\n')
                ++m_line;
            else if (!isBlank(m_buffer[m_at]))
                return true;
        }
        m_start = m_at;
    } while (refill());
    return false;
}

// Reads more text after the start of the current word, which moves to the front.
bool VcdTokens::refill()
{
    const size_t kept = m_end - m_start;
    if (kept == m_buffer.size()) {
        m_failed = m_overlong = true;
        return false;
    }
    std::memmove(m_buffer.data(), m_buffer.data() + m_start, kept);
    m_at -= m_start;
    m_start = 0;
    m_end = kept;
    const qint64 got = m_input.read(m_buffer.data() + kept, qint64(m_buffer.size() - kept));
    m_failed = got < 0;
    if (got <= 0)
        return false;
    m_end += size_t(got);
    m_read += got;
    return true;
}

}
