// Captures of any names and values as dumps: what the reader finds in them was captured.
#include "capture_input.h"

#include "oxacapture/waveform/vcd_reader.h"

#include <QSet>

#include <cmath>
#include <map>

using namespace OXA_CAPTURE;

namespace {

/// The levels of the variables, by the number of the sample from which on they hold.
class Levels : public VcdSink {
public:
    Levels(size_t slots, double samplesPerUnit)
        : m_samplesPerUnit(samplesPerUnit)
        , m_now(slots)
    {
    }

    void change(int slot, std::string_view bits) override { m_now[size_t(slot)] = bits; }
    void endOfTime(quint64 time) override
    {
        const qint64 sample = std::llround(double(time) * m_samplesPerUnit);
        require(m_of.empty() || m_of.rbegin()->first < sample, "a sample has its time");
        m_of[sample] = m_now;
    }

    const std::string& at(qint64 sample, size_t slot) const
    {
        const auto next = m_of.upper_bound(sample);
        require(next != m_of.begin(), "there is a first time");
        return std::prev(next)->second[slot];
    }

private:
    double m_samplesPerUnit;
    std::vector<std::string> m_now;
    std::map<qint64, std::vector<std::string>> m_of;
};

double samplesPerUnit(const QByteArray& dump, double clockHz)
{
    static const std::map<QByteArray, double> kUnits = {
        {"fs", 1e15},
        {"ps", 1e12},
        {"ns", 1e9 },
        {"us", 1e6 },
        {"ms", 1e3 }
    };
    const QByteArray unit = dump.mid(dump.indexOf("$timescale 1 ") + 13, 2);
    require(kUnits.count(unit) == 1, "a unit of time");
    return clockHz > 0 ? clockHz / kUnits.at(unit) : 1;
}

/// A signal of a core that a dump declares as one variable.
struct Declared {
    const OXA::SignalItem* item;
    int firstBit;
};

std::vector<Declared> declaredOf(const CapturedCore& core)
{
    std::vector<Declared> declared;
    QSet<QStringList> names;
    int bit = 0;
    for (const OXA::SignalItem& item : core.items) {
        const QStringList own = OXA::flattenedNames({item});
        if (!names.contains(own)) // what is captured twice is shown once
            declared.push_back({&item, bit});
        names += own;
        bit += item.bitCount();
    }
    return declared;
}

void requireLevels(const CapturedCore& core, const std::vector<Declared>& declared,
    const Levels& levels, size_t slot, qint64 samples)
{
    for (qint64 number = 0; number < samples; ++number) {
        const Taken taken(core, number);
        for (size_t i = 0; i < declared.size(); ++i) {
            std::string expected(size_t(declared[i].item->bitCount()), 'x');
            for (size_t bit = 0; bit < expected.size() && taken.window; ++bit)
                expected[bit] = taken.bit(declared[i].firstBit + int(bit));
            require(levels.at(number, slot + i) == expected, "a level is what was captured");
        }
        const std::string& trigger = levels.at(number, slot + declared.size());
        require(trigger == (!taken.window ? "x" : taken.isTrigger() ? "1" : "0"), "the trigger");
        if (taken.window)
            require(std::stoi(levels.at(number, slot + declared.size() + 1), nullptr, 2)
                    == taken.windowNumber,
                "the window");
    }
}

void requireVcd(const Capture& capture)
{
    const QByteArray dump = written(capture, "vcd");
    const MemoryFile file(reinterpret_cast<const uint8_t*>(dump.constData()), size_t(dump.size()));
    VcdReader reader(file.path());
    require(reader.readHeader(), "a dump can be read");
    const std::vector<VcdVariable>& variables = reader.variables();
    std::vector<int> codes;
    QSet<QString> names;
    for (const VcdVariable& variable : variables) {
        codes.push_back(variable.code);
        names += QString("%1 %2 %3 %4")
                     .arg(QString::number(variable.scope), QString::fromStdString(variable.name),
                         QString::number(variable.msb), QString::number(variable.hasRange));
    }
    require(names.size() == int(variables.size()), "no two variables have one name");
    Levels levels(codes.size(), samplesPerUnit(dump, capture.front().clockHz));
    require(reader.readChanges(codes, levels), "all of a dump can be read");
    qint64 samples = 0;
    for (const CapturedCore& core : capture)
        samples = std::max(samples, sampleCount(core));
    size_t slot = 0;
    for (const CapturedCore& core : capture) {
        const std::vector<Declared> declared = declaredOf(core);
        require(slot + declared.size() + 2 <= variables.size(), "a variable a signal");
        for (size_t i = 0; i < declared.size(); ++i)
            require(variables[slot + i].width == declared[i].item->bitCount(), "as wide as it is");
        requireLevels(core, declared, levels, slot, samples);
        slot += declared.size() + 2;
    }
    require(slot == variables.size(), "no variable but the signals");
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    requireVcd(CaptureInput(data, size).capture());
    return 0;
}
