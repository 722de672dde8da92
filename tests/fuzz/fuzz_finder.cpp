// Names looked up among the variables of a waveform: the name under which a variable is shown
// finds it, or others that it may mean, too.
#include "fuzz_support.h"

#include "oxacapture/waveform/signal_finder.h"

#include <map>

using namespace OXA_CAPTURE;

namespace {

constexpr int kMostVariables = 1 << 12; // each is looked up: no look-up may go through all

/// Names of the input, a byte for their length in front, as words of a dump.
class Names {
public:
    Names(const uint8_t* data, size_t size)
        : m_data(data)
        , m_end(data + size)
    {
    }

    bool more() const { return m_data != m_end; }
    int byte() { return more() ? *m_data++ : 0; }

    std::string word()
    {
        std::string word;
        for (int left = byte() % 12; left > 0 && more(); --left) {
            const char c = char(byte());
            word += uint8_t(c) <= ' ' ? '_' : c;
        }
        return word.empty() || word.front() == '$' ? "w" + word : word;
    }

private:
    const uint8_t* m_data;
    const uint8_t* m_end;
};

/// The declarations that the input describes; some of its variables come in many scopes.
std::string declarations(Names& input)
{
    std::string text;
    int count = 0;
    const auto declare = [&](const std::string& name, int width, const std::string& range) {
        text += "$var wire " + std::to_string(width) + " c" + std::to_string(count++) + ' ' + name
            + range + " $end\n";
    };
    while (input.more() && count < kMostVariables) {
        const int what = input.byte();
        const std::string name = input.word();
        const int width = 1 + what / 8 % 16;
        switch (what % 8) {
        case 0:
            text += "$scope module " + name + " $end\n";
            break;
        case 1:
            text += "$upscope $end\n";
            break;
        case 2:
            for (int i = 0; i < (1 << width) / 16 && count < kMostVariables; ++i) {
                text += "$scope module s" + std::to_string(i) + " $end\n";
                declare(name, 1, {});
                text += "$upscope $end\n";
            }
            break;
        case 3:
            declare(name, width,
                " [" + std::to_string(width + what) + ':' + std::to_string(what + 1) + ']');
            break;
        case 4:
            declare(name, width,
                "[" + std::to_string(what) + ':' + std::to_string(width + what - 1) + ']');
            break;
        case 5:
            declare(name, 1, "[" + std::to_string(what) + ']');
            break;
        default:
            declare(name, what % 8 == 6 ? width : 1, {});
        }
    }
    return text + "$enddefinitions $end\n";
}

/// What is left of a name when everything that separates or marks components is gone.
std::string bare(const std::string& name)
{
    std::string left;
    for (const char c : name) {
        if (c != '\\' && c != ' ' && c != '/' && c != '.')
            left += c;
    }
    return left;
}

QString shown(const std::string& name, const VcdVariable& variable, int bit)
{
    const QString text = QString::fromUtf8(name.data(), int(name.size()));
    const int index = variable.msb >= variable.lsb ? variable.msb - bit : variable.msb + bit;
    const bool scalar = variable.width == 1 && !variable.hasRange;
    return scalar ? text : text + QString("[%1]").arg(index);
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Names input(data, size);
    const QString missing = QString::fromStdString(input.word());
    const std::string dump = declarations(input);
    const MemoryFile file(reinterpret_cast<const uint8_t*>(dump.data()), dump.size());
    VcdReader reader(file.path());
    if (!reader.readHeader())
        return 0;
    const auto& variables = reader.variables();
    std::map<std::string, int> uses; // of the bare names
    for (const VcdVariable& variable : variables)
        ++uses[bare(reader.fullName(variable))];
    const SignalFinder finder(reader);
    Messages messages;
    for (size_t i = 0; i < variables.size(); ++i) {
        const VcdVariable& variable = variables[i];
        const std::string name = reader.fullName(variable);
        if (variable.width == 0 || QString::fromStdString(name).toStdString() != name)
            continue; // no text that a configuration can hold
        const int bit = int(i) % variable.width;
        const WaveformBit found = finder.find(shown(name, variable, bit), &messages);
        if (uses[bare(name)] > 1 || bare(name).find('[') != std::string::npos)
            continue; // it may mean another one as well
        require(found.code == variable.code && found.bit == bit, "a variable is found by its name");
    }
    messages.clear();
    const WaveformBit other = finder.find(missing, &messages);
    require((other.code < 0) == !messages.isEmpty(), "a name that is not found says why");
    return 0;
}
