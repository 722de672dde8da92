// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/top_wrapper.h"

#include "oxautils/generate/standard_files.h"
#include "oxautils/model/log_categories.h"

#include <algorithm>

namespace OXA {

namespace {

constexpr char kPadPorts[] = R"(    tms_pad_i,
    tck_pad_i,
    tdi_pad_i,
    tdo_pad_o)";

constexpr char kPadDirections[] = R"(input tms_pad_i;
input tck_pad_i;
input tdi_pad_i;
output tdo_pad_o;
)";

constexpr char kPadWires[] = R"(wire tms_pad_i;
wire tck_pad_i;
wire tdi_pad_i;
wire tdo_pad_o;
wire tms_i_c;
wire tck_i_c;
wire tdi_i_c;
wire tdo_o_c;
)";

constexpr char kJtagWires[] = R"(wire oxa_jtag_tck;
wire oxa_jtag_reset;
wire run_test_idle_er1;
wire run_test_idle_er2;
wire shift_dr_capture_dr;
wire update_dr;
wire pause_dr;
wire enable_er1;
wire enable_er2;
wire oxa_jtag_tdi;
wire tdo_er1;

)";

constexpr char kPadBuffers[] = R"(IBUF tms_ibuf (
    .I(tms_pad_i),
    .O(tms_i_c)
);

IBUF tck_ibuf (
    .I(tck_pad_i),
    .O(tck_i_c)
);

IBUF tdi_ibuf (
    .I(tdi_pad_i),
    .O(tdi_i_c)
);

OBUF tdo_obuf (
    .I(tdo_o_c),
    .O(tdo_pad_o)
);

)";

constexpr char kJtagPrimitive[] = R"(QX_JTAG  u_qx_jtag(
    .tms_pad_i(tms_i_c),
    .tck_pad_i(tck_i_c),
    .tdi_pad_i(tdi_i_c),
    .tdo_pad_o(tdo_o_c),
    .tck_o(oxa_jtag_tck),
    .test_logic_reset_o(oxa_jtag_reset),
    .run_test_idle_er1_o(run_test_idle_er1),
    .run_test_idle_er2_o(run_test_idle_er2),
    .shift_dr_capture_dr_o(shift_dr_capture_dr),
    .update_dr_o(update_dr),
    .pause_dr_o(pause_dr),
    .enable_er1_o(enable_er1),
    .enable_er2_o(enable_er2),
    .tdi_o(oxa_jtag_tdi),
    .tdo_er1_i(tdo_er1),
    .tdo_er2_i(1'b0)
);

)";

constexpr char kControlHead[] = R"(qx_con_top  u_icon_top(
    .tck_i(oxa_jtag_tck),
    .tdi_i(oxa_jtag_tdi),
    .tdo_o(tdo_er1),
    .rst_i(oxa_jtag_reset),
)";

constexpr char kControlTail[] = R"(    .enable_i(enable_er1),
    .shift_dr_capture_dr_i(shift_dr_capture_dr),
    .update_dr_i(update_dr)
);
)";

void writeControlCore(QTextStream& out, int coreCount)
{
    out << kControlHead;
    for (int i = 0; i < coreCount; ++i)
        out << "    .control" << i << "(control" << i << "[9:0]),\n";
    out << kControlTail;
}

bool isIdentifierCharacter(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '_'
        || u == '$';
}

void warnOfMissing(const QStringList& names, int position)
{
    for (const QString& name : names) {
        if (name.isEmpty())
            qCWarning(logGenerate, "core %d: the signal name \"\" is empty", position);
    }
}

QStringList portsOf(const QList<WatchedBits>& cores)
{
    QStringList ports;
    for (int position = 0; position < cores.size(); ++position) {
        const WatchedBits& core = cores.at(position);
        const QStringList names = core.data + core.triggers + QStringList(core.clock);
        warnOfMissing(names, position);
        ports += escapedSignalNames(names);
    }
    ports.removeDuplicates();
    return ports;
}

}

void logWordFaults(const QStringList& faults)
{
    if (faults.isEmpty())
        return;
    const int more = faults.size() - 1;
    const QString rest
        = more > 0 ? QString(", and %1 more names have faults").arg(more) : QString();
    qCCritical(logGenerate).noquote()
        << faults.first() + rest + "; what follows such a name is read as Verilog";
}

QString escapedSignalName(const QString& name)
{
    if (name.startsWith('\\') || std::all_of(name.begin(), name.end(), isIdentifierCharacter))
        return name;
    return '\\' + name + ' ';
}

QStringList escapedSignalNames(const QStringList& names)
{
    QStringList escaped;
    escaped.reserve(names.size());
    for (const QString& name : names)
        escaped += escapedSignalName(name);
    return escaped;
}

QString concatenation(const QStringList& escapedNames)
{
    return escapedNames.size() == 1 ? escapedNames.first() : '{' + escapedNames.join(',') + '}';
}

void writeTopWrapper(QTextStream& out, const QList<WatchedBits>& cores, const QStringList& outputs,
    const std::function<void(QTextStream&)>& writeAnalyzers)
{
    const QStringList ports = portsOf(cores);
    out << "module qx_oxa(\n";
    for (const QString& port : ports)
        out << "    " << port << ",\n";
    out << kPadPorts;
    for (const QString& output : outputs)
        out << ",\n    " << output;
    out << "\n);\n\n";
    for (const QString& port : ports)
        out << "input " << port << ";\n";
    out << kPadDirections;
    for (const QString& output : outputs)
        out << "output " << output << ";\n";
    out << '\n';
    for (const QString& port : ports)
        out << "wire " << port << ";\n";
    out << kPadWires;
    for (int i = 0; i < cores.size(); ++i)
        out << "wire [9:0] control" << i << ";\n";
    out << kJtagWires << kPadBuffers << kJtagPrimitive;
    writeControlCore(out, cores.size());
    writeAnalyzers(out);
    out << "\nendmodule\n";
}

}
