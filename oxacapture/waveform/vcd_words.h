// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_VCD_WORDS_H
#define OXACAPTURE_WAVEFORM_VCD_WORDS_H

#include "oxacapture/message.h"
#include "oxacapture/waveform/vcd_tokens.h"
#include "oxacapture/waveform/waveform_input.h"

#include <string>

namespace OXA_CAPTURE {

/// The file's words, with errors that name their line. A function that returns false has set
/// `message`.
class VcdWords {
public:
    explicit VcdWords(const QString& path);

    bool open();

    /// The next word; false at the end of the file too, which is no error: `message` has no text.
    bool next(std::string_view& word);

    /// The words before the next "$end", of the section that began with `section`. A section has
    /// at most 16 MiB.
    bool untilEnd(std::string_view section, std::vector<std::string>& words);
    bool skipToEnd(std::string_view section);

    bool fail(const QString& text);
    bool failAtEnd(const QString& where);

    int percentRead() const;
    qint64 position() const { return m_tokens.position(); } ///< bytes of the text that are read

    Message message;

private:
    bool isTooLong(qint64 start, const std::string& section);

    QString m_path;
    WaveformInput m_input;
    VcdTokens m_tokens;
};

/// `word` as a message shows it: what does not print is replaced, and it is cut to a readable
/// length.
QString quotedWord(std::string_view word);

}

#endif
