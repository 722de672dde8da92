// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_VCD_DECLARATIONS_H
#define OXACAPTURE_WAVEFORM_VCD_DECLARATIONS_H

#include "oxacapture/waveform/vcd_reader.h"
#include "oxacapture/waveform/vcd_words.h"

#include <optional>
#include <unordered_map>

namespace OXA_CAPTURE {

/// The identifier codes of a dump, numbered in the order of their declaration.
class VcdCodes {
public:
    /// The code's number; -1 when it was not declared.
    int find(std::string_view id) const;
    /// The code's number, a new one when it was not declared before.
    int declare(std::string_view id);

private:
    std::vector<int> m_short; ///< by the value of the identifier's digits, for short identifiers
    std::unordered_map<std::string, int> m_long;
    int m_count = 0;
};

/// What a dump declares before its first change.
class VcdDeclarations {
public:
    bool read(VcdWords& words);

    std::string fullName(const VcdVariable& variable) const;

    std::vector<VcdVariable> variables;
    std::vector<VcdScope> scopes;
    VcdCodes codes;
    std::vector<int> codeWidths; ///< 0 for a code without bits
    std::string version; ///< the words of $version, or of a comment that begins with them
    std::optional<int> timeExponent; ///< a time unit is 10 to the power of this, in seconds

private:
    bool readSection(VcdWords& words, std::string_view keyword);
    bool readScope(VcdWords& words);
    bool readVariable(VcdWords& words);
    bool readTimescale(VcdWords& words);
    bool readText(VcdWords& words, std::string_view keyword, std::string& text);
    bool readComment(VcdWords& words);

    int m_open = -1; ///< the innermost scope open now
};

}

#endif
