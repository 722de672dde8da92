// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/vcd_declarations.h"

#include "oxacapture/waveform/time_text.h"
#include "oxacapture/waveform/time_unit.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace OXA_CAPTURE {

namespace {

constexpr int kMostBits = 1 << 18; // of one variable
constexpr qint64 kMostText = qint64(1) << 30; // a small compressed file may declare more
constexpr size_t kShortId = 3; // characters: a table of 94^3 places at most

const char* const kKindsWithoutBits[] = {"real", "realtime", "event", "string", "shortreal"};

// An identifier as a number in base 94 that keeps leading zeros; -1 for a long one.
int shortIdNumber(std::string_view id)
{
    if (id.size() > kShortId)
        return -1;
    int number = 0;
    for (const char c : id) {
        if (c < '!' || c > '~')
            return -1;
        number = number * 94 + (c - '!') + 1;
    }
    return number;
}

bool parseInt(std::string_view text, int& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool holdsBits(const std::string& kind)
{
    return std::find(std::begin(kKindsWithoutBits), std::end(kKindsWithoutBits), kind)
        == std::end(kKindsWithoutBits);
}

// "[7:0]" or "[3]"; false for anything else.
bool parseRange(std::string_view text, int& msb, int& lsb)
{
    if (text.size() < 3 || text.front() != '[' || text.back() != ']')
        return false;
    text = text.substr(1, text.size() - 2);
    const size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return parseInt(text, msb) && parseInt(text, lsb);
    return parseInt(text.substr(0, colon), msb) && parseInt(text.substr(colon + 1), lsb);
}

// Splits "data [7:0]", "data[7:0]" and "data [3]"; an index after a vector's name belongs to an
// array and stays part of the name.
bool takeRange(std::string& name, VcdVariable& variable)
{
    const size_t bracket = name.rfind('[');
    int msb = 0;
    int lsb = 0;
    if (bracket == std::string::npos || bracket == 0
        || !parseRange(std::string_view(name).substr(bracket), msb, lsb))
        return true;
    const bool isArrayWord = name.find(':', bracket) == std::string::npos && variable.width > 1;
    if (isArrayWord)
        return true;
    if (std::abs(qint64(msb) - lsb) + 1 != variable.width)
        return false;
    name.resize(bracket);
    variable.msb = msb;
    variable.lsb = lsb;
    variable.hasRange = true;
    return true;
}

std::string joined(
    std::vector<std::string>::const_iterator from, std::vector<std::string>::const_iterator to)
{
    std::string name;
    for (; from != to; ++from)
        name += *from;
    return name.substr(name.front() == '\\' ? 1 : 0);
}

}

int VcdCodes::find(std::string_view id) const
{
    const int number = shortIdNumber(id);
    if (number >= 0)
        return size_t(number) < m_short.size() ? m_short[size_t(number)] : -1;
    const auto found = m_long.find(std::string(id));
    return found == m_long.end() ? -1 : found->second;
}

int VcdCodes::declare(std::string_view id)
{
    const int known = find(id);
    if (known >= 0)
        return known;
    const int number = shortIdNumber(id);
    if (number < 0) {
        m_long.emplace(id, m_count);
        return m_count++;
    }
    if (size_t(number) >= m_short.size())
        m_short.resize(std::max(size_t(number) + 1, 2 * m_short.size()), -1);
    m_short[size_t(number)] = m_count;
    return m_count++;
}

bool VcdDeclarations::read(VcdWords& words)
{
    std::string_view word;
    while (words.next(word)) {
        if (word.front() != '$')
            return words.fail("expected a declaration, found " + quotedWord(word));
        if (word == "$enddefinitions")
            return words.skipToEnd(word);
        if (!readSection(words, word))
            return false;
        if (words.position() > kMostText)
            return words.fail("more than 1 GiB of declarations");
    }
    return words.failAtEnd("before $enddefinitions");
}

bool VcdDeclarations::readSection(VcdWords& words, std::string_view keyword)
{
    if (keyword == "$scope")
        return readScope(words);
    if (keyword == "$var")
        return readVariable(words);
    if (keyword == "$timescale")
        return readTimescale(words);
    if (keyword == "$version")
        return readText(words, keyword, version);
    if (keyword == "$comment" && version.rfind(kTimeTextStart, 0) == 0)
        return readComment(words);
    if (keyword != "$upscope")
        return words.skipToEnd(keyword); // $date, and extensions
    if (m_open < 0)
        return words.fail("$upscope without an open scope");
    m_open = scopes[size_t(m_open)].parent;
    return words.skipToEnd(keyword);
}

bool VcdDeclarations::readText(VcdWords& words, std::string_view keyword, std::string& text)
{
    std::vector<std::string> parts;
    if (!words.untilEnd(keyword, parts))
        return false;
    text.clear();
    for (const std::string& part : parts)
        text += (text.empty() ? "" : " ") + part;
    return true;
}

// An FST file's $version may be cut off; a comment then has all of it.
bool VcdDeclarations::readComment(VcdWords& words)
{
    std::string comment;
    if (!readText(words, "$comment", comment))
        return false;
    if (comment.compare(0, version.size(), version) == 0)
        version = comment;
    return true;
}

// "10ns" or "10 ns"; without one of these, times have no unit.
bool VcdDeclarations::readTimescale(VcdWords& words)
{
    std::vector<std::string> parts;
    if (!words.untilEnd("$timescale", parts))
        return false;
    std::string text;
    for (const std::string& part : parts)
        text += part;
    for (int exponent = kLeastTimeExponent; exponent <= kMostTimeExponent; ++exponent) {
        const QByteArray known = timescaleText(exponent);
        if (text == QByteArray(known).remove(known.indexOf(' '), 1).toStdString())
            timeExponent = exponent;
    }
    return true;
}

bool VcdDeclarations::readScope(VcdWords& words)
{
    std::vector<std::string> parts;
    if (!words.untilEnd("$scope", parts))
        return false;
    if (parts.size() < 2)
        return words.fail("$scope needs a kind and a name");
    scopes.push_back({m_open, joined(parts.begin() + 1, parts.end())});
    m_open = int(scopes.size()) - 1;
    return true;
}

bool VcdDeclarations::readVariable(VcdWords& words)
{
    std::vector<std::string> parts;
    if (!words.untilEnd("$var", parts))
        return false;
    VcdVariable variable;
    if (parts.size() < 4 || !parseInt(parts[1], variable.width))
        return words.fail("$var needs a kind, a width, an identifier and a name");
    if (!holdsBits(parts[0]))
        variable.width = 0;
    else if (variable.width < 1 || variable.width > kMostBits)
        return words.fail("a variable cannot have " + quotedWord(parts[1]) + " bits");
    variable.scope = m_open;
    variable.name = joined(parts.begin() + 3, parts.end());
    variable.msb = std::max(variable.width - 1, 0);
    if (variable.width > 0 && !takeRange(variable.name, variable))
        return words.fail(
            quotedWord(variable.name) + " does not have " + quotedWord(parts[1]) + " bits");
    variable.code = codes.declare(parts[2]);
    if (size_t(variable.code) == codeWidths.size())
        codeWidths.push_back(variable.width);
    else if (codeWidths[size_t(variable.code)] != variable.width)
        return words.fail(
            "identifier " + quotedWord(parts[2]) + " was declared with another width");
    variables.push_back(std::move(variable));
    return true;
}

std::string VcdDeclarations::fullName(const VcdVariable& variable) const
{
    std::vector<const std::string*> parts {&variable.name};
    for (int scope = variable.scope; scope >= 0; scope = scopes[size_t(scope)].parent)
        parts.push_back(&scopes[size_t(scope)].name);
    std::string name;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        name += part == parts.rbegin() ? "" : ".";
        name += **part;
    }
    return name;
}

}
