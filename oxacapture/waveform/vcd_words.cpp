// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/vcd_words.h"

namespace OXA_CAPTURE {

namespace {

constexpr size_t kShownLength = 40;
constexpr qint64 kLongestSection = 1 << 24; // bytes

}

QString quotedWord(std::string_view word)
{
    QString shown;
    for (const char c : word.substr(0, kShownLength))
        shown += c >= ' ' && c <= '~' ? QChar::fromLatin1(c) : QChar('?');
    return '"' + shown + (word.size() > kShownLength ? "...\"" : "\"");
}

VcdWords::VcdWords(const QString& path)
    : m_path(path)
    , m_input(path)
    , m_tokens(m_input)
{
}

bool VcdWords::open()
{
    if (m_input.open())
        return true;
    message = {m_path, m_input.error()};
    return false;
}

bool VcdWords::next(std::string_view& word)
{
    if (m_tokens.next(word))
        return true;
    if (m_tokens.overlong())
        fail("a word is too long for a value change dump");
    else if (m_tokens.failed())
        fail(m_input.error());
    return false;
}

bool VcdWords::untilEnd(std::string_view section, std::vector<std::string>& words)
{
    words.clear();
    std::string_view word;
    const std::string name(section); // the next word invalidates the view
    const qint64 start = position();
    while (next(word)) {
        if (isTooLong(start, name))
            return false;
        if (word == "$end")
            return true;
        words.emplace_back(word);
    }
    return failAtEnd("inside " + QString::fromStdString(name));
}

bool VcdWords::skipToEnd(std::string_view section)
{
    std::string_view word;
    const std::string name(section);
    const qint64 start = position();
    while (next(word)) {
        if (isTooLong(start, name))
            return false;
        if (word == "$end")
            return true;
    }
    return failAtEnd("inside " + QString::fromStdString(name));
}

bool VcdWords::isTooLong(qint64 start, const std::string& section)
{
    return position() - start > kLongestSection
        && !fail(QString::fromStdString(section) + " has no $end within 16 MiB");
}

bool VcdWords::fail(const QString& text)
{
    message = {QString("%1:%2").arg(m_path, QString::number(m_tokens.line())), text};
    return false;
}

bool VcdWords::failAtEnd(const QString& where)
{
    return message.text.isEmpty() ? fail("the file ends " + where) : false;
}

int VcdWords::percentRead() const { return m_input.percentRead(m_tokens.position()); }

}
