// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_VCD_TOKENS_H
#define OXACAPTURE_WAVEFORM_VCD_TOKENS_H

#include <QtGlobal>

#include <string_view>
#include <vector>

namespace OXA_CAPTURE {

class WaveformInput;

/// The words of a text, one after the other, in memory that does not grow with the text.
class VcdTokens {
public:
    explicit VcdTokens(WaveformInput& input);

    /// The next word, valid until the next call. False at the end of the text, after a read error
    /// and before a word too long to be one.
    bool next(std::string_view& word);

    qint64 line() const { return m_line; } ///< of the last word; counted from 1
    qint64 position() const { return m_read - qint64(m_end - m_at); } ///< bytes consumed
    bool failed() const { return m_failed; } ///< reading stopped before the end of the text
    bool overlong() const { return m_overlong; } ///< it stopped since a word was too long

private:
    bool skipBlanks();
    bool refill();

    WaveformInput& m_input;
    std::vector<char> m_buffer;
    size_t m_start = 0; ///< of the word being read
    size_t m_at = 0;
    size_t m_end = 0;
    qint64 m_line = 1;
    qint64 m_read = 0;
    bool m_failed = false;
    bool m_overlong = false;
};

}

#endif
