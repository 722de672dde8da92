// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/stimulus.h"

#include "oxautils/generate/standard_files.h"

#include <QHash>

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

constexpr char kVerilatedHead[] = R"(module oxa_testbench (
    input wire tck_pad_i,
    input wire tms_pad_i,
    input wire tdi_pad_i,
    output wire tdo_pad_o,
)";

constexpr char kFrame[] = R"(#include "Vdesign.h"
#include "verilated.h"

namespace {

VerilatedContext context;
Vdesign design(&context);

struct PortBytes {
    void* bytes;
    std::size_t size;
};

}

#pragma GCC visibility push(default)
extern "C" {

PortBytes oxa_ports[] = {
    {&design.tck_pad_i, sizeof design.tck_pad_i},
    {&design.tms_pad_i, sizeof design.tms_pad_i},
    {&design.tdi_pad_i, sizeof design.tdi_pad_i},
    {&design.tdo_pad_o, sizeof design.tdo_pad_o},
    {&design.values, sizeof design.values},
    {&design.clocks, sizeof design.clocks},
    {&design.looked, sizeof design.looked},
};

void oxa_evaluate() { design.eval(); }

}
#pragma GCC visibility pop

)";

constexpr int kWordBits = 32;

std::vector<quint32> wordsFor(int bits)
{
    return std::vector<quint32>(size_t(bits + kWordBits - 1) / kWordBits);
}

void setBit(std::vector<quint32>& words, int bit, bool value)
{
    quint32& word = words[size_t(bit) / kWordBits];
    const quint32 mask = quint32(1) << bit % kWordBits;
    word = value ? word | mask : word & ~mask;
}

QString instance(const StimulusPorts& ports)
{
    QString text = "\n    qx_oxa u_oxa (\n";
    for (int i = 0; i < ports.values.size(); ++i)
        text += QString("        .%1(values[%2]),\n")
                    .arg(OXA::escapedSignalName(ports.values.at(i)),
                        QString::number(ports.values.size() - 1 - i));
    for (int i = 0; i < ports.clocks.size(); ++i)
        text += QString("        .%1(clocks[%2]),\n")
                    .arg(OXA::escapedSignalName(ports.clocks.at(i)), QString::number(i));
    return text + kPads;
}

void appendWords(QByteArray& bytes, const std::vector<quint32>& words)
{
    bytes.append(reinterpret_cast<const char*>(words.data()), int(words.size() * sizeof(quint32)));
}

}

QByteArray testbench(const StimulusPorts& ports)
{
    return (QString(kHead)
        + QString("    reg [%1:0] values = 0;\n    reg [%2:0] clocks;\n")
              .arg(QString::number(ports.values.size() - 1),
                  QString::number(ports.clocks.size() - 1))
        + instance(ports) + kTail)
        .toUtf8();
}

QByteArray verilatedTestbench(const StimulusPorts& ports, const QStringList& looked)
{
    QStringList nets;
    for (const QString& net : looked)
        nets.prepend(net);
    return (QString(kVerilatedHead)
        + QString("    input wire [%1:0] values,\n    input wire [%2:0] clocks,\n"
                  "    output wire [%3:0] looked\n);\n")
              .arg(QString::number(ports.values.size() - 1),
                  QString::number(ports.clocks.size() - 1), QString::number(looked.size() - 1))
        + instance(ports) + "    assign looked = {\n        " + nets.join(",\n        ")
        + "};\nendmodule\n")
        .toUtf8();
}

QByteArray verilatedFrame(const QStringList& looked)
{
    const QString names
        = QString("extern \"C\" __attribute__((visibility(\"default\"))) const char* oxa_looked;\n"
                  "const char* oxa_looked = \"%1\";\n\n")
              .arg(looked.join(' '));
    return (names + kFrame).toUtf8();
}

QByteArray testbench(const QByteArray& analyzer)
{
    return kHead + QByteArray("    reg values = 0, clocks = 0;\n") + analyzer + kTail;
}

Stimulus::Stimulus(const StimulusPorts& ports, int leadIn, int leadOut,
    const SampledWaveform& waveform, const std::vector<CorePlan>& cores)
    : m_edges(waveform.edges)
    , m_leadIn(qint64(2) * leadIn)
    , m_steps(qint64(2) * (leadIn + leadOut))
    , m_values(wordsFor(ports.values.size()))
    , m_before(wordsFor(ports.clocks.size()))
    , m_clockCount(ports.clocks.size())
{
    QHash<QString, int> places;
    for (int i = 0; i < ports.values.size(); ++i)
        places.insert(ports.values.at(i), ports.values.size() - 1 - i);
    for (size_t i = 0; i < cores.size(); ++i) {
        const SampleRequest& request = cores[i].request;
        const SampleLayout& layout = waveform.cores[i].layout();
        Core core;
        core.samples = &waveform.cores[i];
        core.clock = waveform.clocks.indexOf(request.clock);
        core.fallingEdge = request.fallingEdge;
        for (int field = 0; field < layout.fieldCount(); ++field) {
            const QStringList& names = request.fields[size_t(field)];
            for (int bit = 0; bit < names.size(); ++bit)
                core.bits.push_back({layout.valueAt(field) + bit / 64, bit % 64,
                    places.value(names.at(names.size() - 1 - bit))});
        }
        m_cores.push_back(core);
    }
    for (auto edge = m_edges.rbegin(); edge != m_edges.rend(); ++edge) {
        setBit(m_before, edge->clock, !edge->level);
        m_steps += edge->sameTime ? 0 : 1;
    }
    rewind();
}

void Stimulus::rewind()
{
    m_step = 0;
    m_edge = 0;
    m_shownValues.clear();
    m_clocks = m_before;
    m_unknown = wordsFor(m_clockCount);
    for (int clock = 0; clock < m_clockCount; ++clock)
        setBit(m_unknown, clock, m_leadIn == 0);
    for (Core& core : m_cores) {
        core.nextSample = 0;
        showSample(core, 0);
    }
}

QByteArray Stimulus::clocksBefore() const
{
    QByteArray levels;
    for (int clock = 0; clock < m_clockCount; ++clock)
        levels += (m_before[size_t(clock) / kWordBits] >> clock % kWordBits & 1) != 0 ? '1' : '0';
    return levels;
}

QByteArray Stimulus::next(qint64 count)
{
    QByteArray steps;
    for (; count > 0; --count) {
        if (m_step < m_leadIn || m_edge == m_edges.size())
            toggleClocks();
        else
            playEdges();
        ++m_step;
        append(steps);
    }
    return steps;
}

void Stimulus::showSample(const Core& core, qint64 sample)
{
    const quint64* row = core.samples->row(sample);
    for (const CoreBit& bit : core.bits)
        setBit(m_values, bit.bit, row[bit.word] >> bit.shift & 1);
}

void Stimulus::toggleClocks()
{
    for (quint32& word : m_clocks)
        word = ~word;
}

void Stimulus::playEdges()
{
    do {
        const ClockEdge& edge = m_edges[m_edge];
        setBit(m_clocks, edge.clock, edge.level);
        setBit(m_unknown, edge.clock, false);
        for (Core& core : m_cores) {
            if (core.clock == edge.clock && core.fallingEdge != edge.level)
                showSample(core, core.nextSample++);
        }
        ++m_edge;
    } while (m_edge < m_edges.size() && m_edges[m_edge].sameTime);
}

void Stimulus::append(QByteArray& steps)
{
    const bool changes = m_shownValues != m_values;
    steps += char(changes);
    if (changes)
        appendWords(steps, m_values);
    appendWords(steps, m_clocks);
    appendWords(steps, m_unknown);
    m_shownValues = m_values;
}

}
