// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/vcd_reader.h"

#include "oxacapture/waveform/vcd_declarations.h"

#include <charconv>

namespace OXA_CAPTURE {

namespace {

constexpr qint64 kReportedText = 1 << 20; // bytes, when their percentage is not known
constexpr qint64 kLook = 1 << 14; // bytes between two looks at the percentage, a call of the system

// The meaning of a value's character: '0', '1', 'x' or 'z', or NUL for none. Includes upper case
// and the other states of VHDL's std_logic.
constexpr char kMeanings[][2] = {
    {'0', '0'},
    {'1', '1'},
    {'x', 'x'},
    {'X', 'x'},
    {'z', 'z'},
    {'Z', 'z'},
    {'u', 'x'},
    {'U', 'x'},
    {'w', 'x'},
    {'W', 'x'},
    {'-', 'x'},
    {'l', '0'},
    {'L', '0'},
    {'h', '1'},
    {'H', '1'},
};

struct Meanings {
    char of[256] = {};
    Meanings()
    {
        for (const auto& row : kMeanings)
            of[uchar(row[0])] = row[1];
    }
};

char meaning(char c)
{
    static const Meanings meanings;
    return meanings.of[uchar(c)];
}

}

VcdSink::~VcdSink() = default;

struct VcdReader::Private {
    explicit Private(const QString& path)
        : words(path)
    {
    }

    bool readWord(std::string_view word);
    bool readTime(std::string_view word);
    bool readScalar(std::string_view word);
    bool readVector(std::string_view word);
    bool readKeyword(std::string_view word);
    bool skipValue();
    int codeOf(std::string_view id);
    bool reportProgress();

    VcdWords words;
    VcdDeclarations declarations;
    std::vector<int> slots; // of a code; -1 when it is not watched
    VcdSink* sink = nullptr;
    Progress progress;
    int percent = 0;
    qint64 reported = 0; // position in the text
    qint64 looked = 0; // the same at the last look
    std::string bits;
    quint64 time = 0;
};

VcdReader::VcdReader(const QString& path)
    : d(std::make_unique<Private>(path))
{
}

VcdReader::~VcdReader() = default;

bool VcdReader::readHeader() { return d->words.open() && d->declarations.read(d->words); }

const std::vector<VcdVariable>& VcdReader::variables() const { return d->declarations.variables; }

const std::vector<VcdScope>& VcdReader::scopes() const { return d->declarations.scopes; }

std::optional<int> VcdReader::timeExponent() const { return d->declarations.timeExponent; }

const std::string& VcdReader::version() const { return d->declarations.version; }

std::string VcdReader::fullName(const VcdVariable& variable) const
{
    return d->declarations.fullName(variable);
}

const Message& VcdReader::message() const { return d->words.message; }

bool VcdReader::readChanges(
    const std::vector<int>& watched, VcdSink& sink, const Progress& progress)
{
    d->slots.assign(d->declarations.codeWidths.size(), -1);
    for (size_t slot = 0; slot < watched.size(); ++slot)
        d->slots[size_t(watched[slot])] = int(slot);
    d->sink = &sink;
    d->progress = progress;

    std::string_view word;
    while (d->words.next(word)) {
        if (!d->readWord(word))
            return false;
    }
    if (!d->words.message.text.isEmpty())
        return false;
    sink.endOfTime(d->time);
    return true;
}

bool VcdReader::Private::readWord(std::string_view word)
{
    const char first = word.front();
    if (first == '#')
        return readTime(word);
    if (first == 'b' || first == 'B')
        return readVector(word);
    if (first == 'r' || first == 'R' || first == 's' || first == 'S')
        return skipValue();
    if (first == '$')
        return readKeyword(word);
    if (meaning(first))
        return readScalar(word);
    return words.fail("expected a time or a value change, found " + quotedWord(word));
}

bool VcdReader::Private::readTime(std::string_view word)
{
    quint64 next = 0;
    const char* end = word.data() + word.size();
    const auto result = std::from_chars(word.data() + 1, end, next);
    if (result.ec != std::errc() || result.ptr != end)
        return words.fail(quotedWord(word) + " is not a time");
    if (next < time)
        return words.fail("time " + quotedWord(word) + " is before the previous one");
    if (next == time)
        return true;
    sink->endOfTime(time);
    time = next;
    return reportProgress();
}

bool VcdReader::Private::reportProgress()
{
    if (!progress || words.position() - looked < kLook)
        return true;
    looked = words.position();
    const int now = words.percentRead();
    const bool isMore = looked - reported >= kReportedText;
    if (now == percent && !isMore)
        return true;
    percent = now;
    reported = looked;
    return progress(now);
}

bool VcdReader::Private::readScalar(std::string_view word)
{
    const int code = codeOf(word.substr(1));
    if (code < 0)
        return false;
    const int slot = slots[size_t(code)];
    if (slot < 0)
        return true;
    const char value = meaning(word.front());
    bits.assign(size_t(declarations.codeWidths[size_t(code)]), value == '1' ? '0' : value);
    if (bits.empty())
        return true;
    bits.back() = value;
    sink->change(slot, bits);
    return true;
}

bool VcdReader::Private::readVector(std::string_view word)
{
    bits.clear();
    for (const char c : word.substr(1)) {
        const char value = meaning(c);
        if (!value)
            return words.fail(quotedWord(word) + " is not a value of bits");
        bits += value;
    }
    if (bits.empty())
        return words.fail("a value without bits");
    std::string_view id;
    if (!words.next(id))
        return words.failAtEnd("inside a value change");
    const int code = codeOf(id);
    if (code < 0)
        return false;
    const size_t width = size_t(declarations.codeWidths[size_t(code)]);
    if (bits.size() > width)
        return words.fail(
            QString("a value of %1 bits for the %2 of identifier %3")
                .arg(QString::number(bits.size()), QString::number(width), quotedWord(id)));
    const int slot = slots[size_t(code)];
    if (slot < 0)
        return true;
    // The leading bits of a short value repeat: zeros, or its first bit unless that is 1.
    bits.insert(0, width - bits.size(), bits.front() == '1' ? '0' : bits.front());
    sink->change(slot, bits);
    return true;
}

bool VcdReader::Private::skipValue()
{
    std::string_view id;
    if (!words.next(id))
        return words.failAtEnd("inside a value change");
    return codeOf(id) >= 0;
}

bool VcdReader::Private::readKeyword(std::string_view word)
{
    // The changes inside these sections are ordinary changes.
    for (const char* keyword : {"$dumpvars", "$dumpall", "$dumpon", "$dumpoff", "$end"}) {
        if (word == keyword)
            return true;
    }
    return words.skipToEnd(word);
}

int VcdReader::Private::codeOf(std::string_view id)
{
    const int code = declarations.codes.find(id);
    if (code < 0)
        words.fail("identifier " + quotedWord(id) + " was not declared");
    return code;
}

}
