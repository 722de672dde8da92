// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/stimulus_file.h"

#include "files/replace_file.h"
#include "oxautils/generate/standard_files.h"

#include <QHash>
#include <QIODevice>

namespace OXA_CAPTURE {

namespace {

constexpr char kHead[] = R"(module oxa_testbench;
    reg tck_pad_i = 0, tms_pad_i = 0, tdi_pad_i = 0;
    wire tdo_pad_o;
)";

constexpr char kPads[] = R"(        .tms_pad_i(tms_pad_i),
        .tck_pad_i(tck_pad_i),
        .tdi_pad_i(tdi_pad_i),
        .tdo_pad_o(tdo_pad_o)
    );
)";

constexpr char kTail[] = R"(
    initial $oxa_target(tck_pad_i, tms_pad_i, tdi_pad_i, tdo_pad_o, values, clocks);
endmodule
)";

constexpr int kFlushAt = 1 << 20; // bytes

/// A number of many bits, written in hexadecimal.
class HexNumber {
public:
    explicit HexNumber(int bits)
        : m_digits((bits + 3) / 4, '0')
    {
    }

    void set(int bit, bool value)
    {
        char& digit = m_digits.data()[m_digits.size() - 1 - bit / 4];
        const int old = digit <= '9' ? digit - '0' : digit - 'a' + 10;
        const int now = value ? old | 1 << bit % 4 : old & ~(1 << bit % 4);
        digit = "0123456789abcdef"[now];
    }

    const QByteArray& digits() const { return m_digits; }

private:
    QByteArray m_digits;
};

/// Writes the steps of the waveform: at the clocks' edges, with the sample of every core at the
/// ports before the edge that takes it.
class Player {
public:
    Player(const StimulusPorts& ports, const SampledWaveform& waveform,
        const std::vector<SampleRequest>& requests);

    /// The lines for `periods` of all clocks.
    QByteArray idle(int periods);
    /// The same before the waveform: they leave each clock at the level before its first edge.
    QByteArray begin(int periods);
    /// Line by line; empty at the end.
    QByteArray next();

    qint64 steps() const { return m_steps; }

private:
    struct CorePort {
        int field;
        int place; // of the field
        int bit; // of the ports' values
    };

    void showSample(size_t core, qint64 sample);
    void changeClock(int clock, bool level);
    QByteArray line();

    const SampledWaveform& m_waveform;
    const std::vector<SampleRequest>& m_requests;
    std::vector<std::vector<CorePort>> m_corePorts;
    std::vector<qint64> m_nextSamples;
    HexNumber m_values;
    QByteArray m_shownValues;
    QByteArray m_clocks; // one digit for each, the first clock last; x before its first edge
    size_t m_edge = 0;
    qint64 m_steps = 0;
};

Player::Player(const StimulusPorts& ports, const SampledWaveform& waveform,
    const std::vector<SampleRequest>& requests)
    : m_waveform(waveform)
    , m_requests(requests)
    , m_nextSamples(requests.size())
    , m_values(ports.values.size())
    , m_clocks(ports.clocks.size(), 'x')
{
    QHash<QString, int> bits;
    for (int i = 0; i < ports.values.size(); ++i)
        bits.insert(ports.values.at(i), ports.values.size() - 1 - i);
    for (size_t core = 0; core < requests.size(); ++core) {
        m_corePorts.emplace_back();
        for (size_t field = 0; field < requests[core].fields.size(); ++field) {
            const QStringList& names = requests[core].fields[field];
            for (int place = 0; place < names.size(); ++place)
                m_corePorts[core].push_back({int(field), place, bits.value(names.at(place))});
        }
        showSample(core, 0);
    }
}

void Player::showSample(size_t core, qint64 sample)
{
    for (const CorePort& port : m_corePorts[core])
        m_values.set(
            port.bit, m_waveform.cores[core].bit(sample, port.field, port.place) == Logic::One);
}

void Player::changeClock(int clock, bool level)
{
    m_clocks.data()[m_clocks.size() - 1 - clock] = level ? '1' : '0';
    for (size_t core = 0; core < m_requests.size(); ++core) {
        const SampleRequest& request = m_requests[core];
        if (m_waveform.clocks.at(clock) == request.clock && level != request.fallingEdge)
            showSample(core, m_nextSamples[core]++);
    }
}

QByteArray Player::line()
{
    ++m_steps;
    const bool changed = m_shownValues != m_values.digits();
    m_shownValues = m_values.digits();
    return (changed ? m_shownValues : "-") + ' ' + m_clocks + '\n';
}

QByteArray Player::idle(int periods)
{
    QByteArray lines;
    for (int change = 0; change < 2 * periods; ++change) {
        for (char& level : m_clocks)
            level = level == '0' ? '1' : '0';
        lines += line();
    }
    return lines;
}

QByteArray Player::begin(int periods)
{
    const std::vector<ClockEdge>& edges = m_waveform.edges;
    for (auto edge = edges.rbegin(); periods > 0 && edge != edges.rend(); ++edge)
        m_clocks.data()[m_clocks.size() - 1 - edge->clock] = edge->level ? '0' : '1';
    return idle(periods);
}

QByteArray Player::next()
{
    const std::vector<ClockEdge>& edges = m_waveform.edges;
    if (m_edge == edges.size())
        return {};
    do {
        changeClock(edges[m_edge].clock, edges[m_edge].level);
        ++m_edge;
    } while (m_edge < edges.size() && edges[m_edge].sameTime);
    return line();
}

}

QByteArray testbench(const StimulusPorts& ports)
{
    QString text = kHead;
    text += QString("    reg [%1:0] values = 0;\n").arg(ports.values.size() - 1);
    text += QString("    reg [%1:0] clocks;\n\n    qx_oxa u_oxa (\n").arg(ports.clocks.size() - 1);
    for (int i = 0; i < ports.values.size(); ++i)
        text += QString("        .%1(values[%2]),\n")
                    .arg(OXA::escapedSignalName(ports.values.at(i)),
                        QString::number(ports.values.size() - 1 - i));
    for (int i = 0; i < ports.clocks.size(); ++i)
        text += QString("        .%1(clocks[%2]),\n")
                    .arg(OXA::escapedSignalName(ports.clocks.at(i)), QString::number(i));
    return (text + kPads + kTail).toUtf8();
}

QByteArray testbench(const QByteArray& analyzer)
{
    return kHead + QByteArray("    reg values = 0, clocks = 0;\n") + analyzer + kTail;
}

qint64 writeStimulus(const QString& path, const StimulusPorts& ports, int leadIn, int leadOut,
    const SampledWaveform& waveform, const std::vector<SampleRequest>& requests, QString* error)
{
    Player player(ports, waveform, requests);
    const auto fill = [&player, leadIn, leadOut](QIODevice& out, QString*) {
        QByteArray text = player.begin(leadIn);
        for (QByteArray line = player.next(); !line.isEmpty(); line = player.next()) {
            text += line;
            if (text.size() < kFlushAt)
                continue;
            if (out.write(text) != text.size())
                return false;
            text.clear();
        }
        text += player.idle(leadOut);
        return out.write(text) == text.size();
    };
    return OXA_FILES::writeFile(path, fill, error) ? player.steps() : -1;
}

}
