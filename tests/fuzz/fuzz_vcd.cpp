// Any file as a waveform: read to its end, or refused with the line.
#include "fuzz_support.h"

#include "oxacapture/waveform/vcd_reader.h"

#include <algorithm>

namespace {

class CountingSink : public OXA_CAPTURE::VcdSink {
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

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const MemoryFile file(data, size);
    OXA_CAPTURE::VcdReader reader(file.path());
    if (!reader.readHeader()) {
        require(!reader.message().text.isEmpty(), "a refusal says why");
        return 0;
    }
    std::vector<int> codes;
    std::vector<int> widths;
    for (const OXA_CAPTURE::VcdVariable& variable : reader.variables()) {
        reader.fullName(variable);
        if (variable.width == 0
            || std::find(codes.begin(), codes.end(), variable.code) != codes.end())
            continue;
        codes.push_back(variable.code);
        widths.push_back(variable.width);
    }
    CountingSink sink(widths);
    require(reader.readChanges(codes, sink) || !reader.message().text.isEmpty(), "says why");
    return 0;
}
