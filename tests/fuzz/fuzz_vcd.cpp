// SPDX-License-Identifier: Apache-2.0
// Any file as a waveform: read to its end, or refused with the line. The name under which a
// variable is shown finds it, or others that it may mean, too.
#include "fuzz_support.h"

#include "oxacapture/files/capture_file.h"
#include "oxacapture/waveform/signal_finder.h"

#include <algorithm>
#include <map>

using namespace OXA_CAPTURE;

namespace {

class CountingSink : public VcdSink {
public:
    explicit CountingSink(std::vector<int> widths)
        : m_widths(std::move(widths))
    {
    }
    void change(int slot, std::string_view bits) override
    {
        require(slot >= 0 && size_t(slot) < m_widths.size(), "a slot that was asked for");
        require(int(bits.size()) == m_widths[size_t(slot)], "as wide as declared");
    }
    void endOfTime(quint64 time) override
    {
        require(time >= m_time, "time does not run back");
        m_time = time;
    }

private:
    std::vector<int> m_widths;
    quint64 m_time = 0;
};

/// What is left of a name when everything that separates or marks components is gone.
std::string bare(std::string name)
{
    const auto isMark = [](char c) { return std::string("\\ /.").find(c) != std::string::npos; };
    name.erase(std::remove_if(name.begin(), name.end(), isMark), name.end());
    return name;
}

void requireFound(VcdReader& reader)
{
    std::map<std::string, int> uses; // of the bare names
    for (const VcdVariable& variable : reader.variables())
        ++uses[bare(reader.fullName(variable))];
    const SignalFinder finder(reader);
    for (const VcdVariable& variable : reader.variables()) {
        const std::string name = reader.fullName(variable);
        QString shown = QString::fromStdString(name);
        if (variable.width == 0 || shown.toStdString() != name)
            continue; // no text that a configuration can hold
        if (variable.width > 1 || variable.hasRange)
            shown += QString("[%1]").arg(variable.lsb);
        Messages messages;
        const WaveformBit found = finder.find(shown, &messages);
        require((found.code < 0) == !messages.isEmpty(), "a name that is not found says why");
        if (uses[bare(name)] > 1 || bare(name).find('[') != std::string::npos)
            continue; // it may mean another one as well
        require(found.code == variable.code && found.bit == variable.width - 1,
            "a variable is found by its name");
    }
}

// As a capture, too: every sample has a time, and every window an end.
void requireCapture(const QString& path)
{
    Capture capture;
    QString error;
    require(readCapture(path, capture, &error) || !error.isEmpty(), "says why");
    for (const CapturedCore& core : capture) {
        for (const CapturedWindow& window : core.windows) {
            const auto samples = size_t(window.samples.size());
            require(samples > 0 && qint64(samples) == window.place.samples, "a sample a time");
            require(window.times.empty() || window.times.size() == samples + 1, "and an end");
            require(std::is_sorted(window.times.begin(), window.times.end()), "in order");
        }
    }
}

}

void fuzz(const QByteArray& input)
{
    if (input.startsWith('\0') || input.startsWith('\xfe'))
        return; // for another program
    const MemoryFile file(input);
    requireCapture(file.path());
    VcdReader reader(file.path());
    if (!reader.readHeader())
        return require(!reader.message().text.isEmpty(), "a refusal says why");
    requireFound(reader);
    std::vector<int> codes;
    std::vector<int> widths;
    for (const VcdVariable& variable : reader.variables()) {
        if (variable.width == 0
            || std::find(codes.begin(), codes.end(), variable.code) != codes.end())
            continue;
        codes.push_back(variable.code);
        widths.push_back(variable.width);
    }
    CountingSink sink(widths);
    require(reader.readChanges(codes, sink) || !reader.message().text.isEmpty(), "says why");
}
