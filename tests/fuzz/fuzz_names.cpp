// SPDX-License-Identifier: Apache-2.0
// A signal's name, as generated files hold it: one that is accepted stays one word there, and
// becomes no other.
#include "fuzz_support.h"

#include "oxautils/generate/standard_files.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/model/verilog_word.h"

#include <algorithm>
#include <cctype>

namespace {

/// What Verilog's lexer reads from the beginning of `text`: an escaped name goes to the next white
/// space, any other to the first character that no name has.
QByteArray firstWord(const QByteArray& text)
{
    // Control characters, too: some tools end the name there, others refuse it.
    const auto endsEscaped = [](char c) { return uchar(c) <= ' ' || c == '\x7f'; };
    const auto endsPlain = [](char c) { return !std::isalnum(uchar(c)) && c != '_' && c != '$'; };
    const auto end = text.startsWith('\\') ? std::find_if(text.begin(), text.end(), endsEscaped)
                                           : std::find_if(text.begin(), text.end(), endsPlain);
    return QByteArray(text.begin(), int(end - text.begin()));
}

void requireOneWord(const QString& name)
{
    const QByteArray own = name.toUtf8();
    const QByteArray expected = own.startsWith('\\') ? own.chopped(1) : own;
    for (const char* behind : {",\n", ";\n", ")", "}", "(values[0]),\n"}) {
        const QByteArray text = OXA::escapedSignalName(name).toUtf8() + behind;
        const QByteArray word = firstWord(text);
        const QByteArray read = word.startsWith('\\') && !own.startsWith('\\') ? word.mid(1) : word;
        require(read == expected, "the name is read as one word");
        require(!word.contains('`'), "no macro is in it");
        const QByteArray rest = text.mid(word.size());
        require(rest == behind || rest == QByteArray(" ") + behind, "what follows stays");
    }
}

void requireShowable(const QString& text)
{
    const QString shown = OXA::shownText(text);
    const auto steers = [](uint c) {
        const QChar::Category category = QChar::category(c);
        return category == QChar::Other_Control || category == QChar::Other_Format
            || category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
    };
    const QVector<uint> characters = shown.toUcs4();
    require(std::none_of(characters.begin(), characters.end(), steers), "nothing steers");
    require(OXA::shownText(shown) == shown, "what was escaped stays");
    require(OXA::shownLines(text).count('\n') == text.count('\n'), "lines stay lines");
}

}

void fuzz(const QByteArray& input)
{
    const QString name = QString::fromUtf8(input);
    requireShowable(name);
    OXA::AoCore core(0);
    core.sampleClock = name;
    const char* fault = OXA::wordFault(name);
    require((fault != nullptr) == (OXA::wordFaults({&core}).size() == 1), "the clock is looked at");
    if (!fault && !name.isEmpty())
        requireOneWord(name);
}
