// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/template_files.h"

#include "oxautils/generate/file_names.h"
#include "oxautils/generate/readable_ports.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/verilog_file.h"

#include <algorithm>

namespace OXA {

namespace {

constexpr char kVerilogHead[]
    = R"(// The analyzer with one port for each bus or signal, under names of Verilog and VHDL.
//
// An instance to copy. Where it says "from", the configuration's name cannot be used here: replace
// the text in parentheses by that signal of your design.
//
//     oxa_analyzer u_oxa_analyzer (
)";

constexpr char kVerilogPads[] = R"(//         .tms_pad_i(tms_pad_i),
//         .tck_pad_i(tck_pad_i),
//         .tdi_pad_i(tdi_pad_i),
//         .tdo_pad_o(tdo_pad_o))";

constexpr char kPadPorts[] = R"(    input  wire tms_pad_i,
    input  wire tck_pad_i,
    input  wire tdi_pad_i,
    output wire tdo_pad_o)";

constexpr char kPadConnections[] = R"(        .tms_pad_i(tms_pad_i),
        .tck_pad_i(tck_pad_i),
        .tdi_pad_i(tdi_pad_i),
        .tdo_pad_o(tdo_pad_o))";

constexpr char kVhdlHead[]
    = R"(-- The module oxa_analyzer of qx_oxa_template.v for VHDL: "use work.oxa_template.all;".
--
-- An instance to copy. Where it says "from", the configuration's name cannot be used here: replace
-- the text after => by that signal of your design.
--
--     u_oxa_analyzer : oxa_analyzer
--         port map (
)";

constexpr char kVhdlPads[] = R"(--             tms_pad_i => tms_pad_i,
--             tck_pad_i => tck_pad_i,
--             tdi_pad_i => tdi_pad_i,
--             tdo_pad_o => tdo_pad_o)";

constexpr char kVhdlComponent[] = R"(
--         );

library ieee;
use ieee.std_logic_1164.all;

package oxa_template is
    component oxa_analyzer
        port (
)";

constexpr char kVhdlPadPorts[] = R"(            tms_pad_i : in  std_logic;
            tck_pad_i : in  std_logic;
            tdi_pad_i : in  std_logic;
            tdo_pad_o : out std_logic)";

constexpr char kVhdlTail[] = R"(
        );
    end component;
end package;
)";

QList<SignalItem> clockAndTriggers(const AoCore& core)
{
    QList<SignalItem> items;
    for (const TriggerPort* port : core.availableTriggers())
        items += port->signalList;
    SignalItem clock;
    clock.name = core.sampleClock;
    return items << clock;
}

/// The items of the wrapper's ports, in their order.
QList<SignalItem> itemsOf(const Configuration& configuration)
{
    QList<SignalItem> items;
    for (const AoCore* core : configuration.cores)
        items += core->captureSignals + clockAndTriggers(*core);
    for (const AOCore_Lite* core : configuration.liteCores) {
        SignalItem clock;
        clock.name = core->sampleClock;
        items += core->signalList + QList<SignalItem> {clock};
    }
    return items;
}

QString plainName(const QString& bit)
{
    const IndexedName name = indexedName(bit);
    return name.index < 0 ? name.stem : name.stem + '[' + QString::number(name.index) + ']';
}

QString verilogRange(const ReadablePort& port)
{
    return QString("[%1:%2]").arg(QString::number(port.left), QString::number(port.right));
}

QString vhdlRange(const ReadablePort& port)
{
    return QString("(%1 %2 %3)")
        .arg(QString::number(port.left), port.left < port.right ? "to" : "downto",
            QString::number(port.right));
}

/// The names in the configuration of a port's signals.
QString source(const ReadablePort& port)
{
    if (port.isVector && !port.stem.isEmpty())
        return port.stem + verilogRange(port);
    QStringList names;
    for (const QString& bit : port.bits)
        names += plainName(bit);
    return names.join(", ");
}

/// Whether a design with the instance may use these signals by their names.
bool isInReach(const ReadablePort& port)
{
    return std::all_of(port.bits.begin(), port.bits.end(),
        [](const QString& bit) { return isReadable(indexedName(bit).stem); });
}

QString verilogActual(const ReadablePort& port)
{
    if (!isInReach(port))
        return port.name;
    const bool isRow = port.isVector && port.stem.isEmpty();
    return isRow ? '{' + source(port) + '}' : source(port);
}

/// The associations of a port in a VHDL instance, without commas.
QStringList vhdlAssociations(const ReadablePort& port)
{
    const auto element = [](const QString& bit) {
        const IndexedName name = indexedName(bit);
        return name.index < 0 ? name.stem : name.stem + '(' + QString::number(name.index) + ')';
    };
    if (!isInReach(port))
        return {port.name + " => " + port.name};
    if (!port.isVector)
        return {port.name + " => " + element(port.bits.first())};
    if (!port.stem.isEmpty())
        return {port.name + " => " + port.stem + vhdlRange(port)};
    QStringList associations;
    for (int i = 0; i < port.bits.size(); ++i)
        associations
            += QString("%1(%2) => %3")
                   .arg(port.name, QString::number(port.left - i), element(port.bits.at(i)));
    return associations;
}

/// A bit of a port inside the module.
QString bitOf(const ReadablePort& port, int i)
{
    if (!port.isVector)
        return port.name;
    const int index = port.left < port.right ? port.left + i : port.left - i;
    return port.name + '[' + QString::number(index) + ']';
}

/// `outputs`, each behind a separator, as `form` in which @ is its name.
void writeOutputs(QTextStream& out, const QStringList& outputs, const char* form)
{
    for (const QString& output : outputs)
        out << QString(form).replace('@', output);
}

void writeVerilog(QTextStream& out, const QList<ReadablePort>& ports, const QStringList& outputs)
{
    out << kVerilogHead;
    for (const ReadablePort& port : ports)
        out << "//         ." << port.name << '(' << verilogActual(port) << "),"
            << (isInReach(port) ? QString() : " // from " + source(port)) << '\n';
    out << kVerilogPads;
    writeOutputs(out, outputs, ",\n//         .@(@)");
    out << "\n//     );\nmodule oxa_analyzer (\n";
    for (const ReadablePort& port : ports)
        out << "    input  wire " << (port.isVector ? verilogRange(port) + ' ' : QString())
            << port.name << ",\n";
    out << kPadPorts;
    writeOutputs(out, outputs, ",\n    output wire @");
    out << "\n);\n\n    qx_oxa u_qx_oxa (\n";
    for (const ReadablePort& port : ports) {
        for (int i = 0; i < port.bits.size(); ++i)
            out << "        ." << escapedSignalName(port.bits.at(i)) << '(' << bitOf(port, i)
                << "),\n";
    }
    out << kPadConnections;
    writeOutputs(out, outputs, ",\n        .@(@)");
    out << "\n    );\n\nendmodule\n";
}

/// `text` for a VHDL comment.
QString inVhdl(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.unicode() > '~'; }, QChar('?'));
    return text;
}

void writeVhdl(QTextStream& out, const QList<ReadablePort>& ports, const QStringList& outputs)
{
    out << kVhdlHead;
    for (const ReadablePort& port : ports) {
        const QString from = isInReach(port) ? QString() : " -- from " + inVhdl(source(port));
        for (const QString& association : vhdlAssociations(port))
            out << "--             " << association << ',' << from << '\n';
    }
    out << kVhdlPads;
    writeOutputs(out, outputs, ",\n--             @ => @");
    out << kVhdlComponent;
    for (const ReadablePort& port : ports)
        out << "            " << port.name << " : in  std_logic"
            << (port.isVector ? "_vector" + vhdlRange(port) : QString()) << ";\n";
    out << kVhdlPadPorts;
    writeOutputs(out, outputs, ";\n            @ : out std_logic");
    out << kVhdlTail;
}

}

bool writeTemplates(const OxaArg& arg, const Configuration& configuration)
{
    const QStringList outputs = triggerOutputs(configuration.cores);
    const QList<ReadablePort> ports = readablePorts(itemsOf(configuration), outputs);
    return writeVerilogFile(arg.workDir, TEMPLATE_FILE_NAME, [&](QTextStream& out) {
        writeVerilog(out, ports, outputs);
    }) && writeVerilogFile(arg.workDir, VHDL_TEMPLATE_FILE_NAME, [&](QTextStream& out) {
        writeVhdl(out, ports, outputs);
    });
}

}
