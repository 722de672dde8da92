// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/attach_wrapper.h"

#include "oxautils/design/source_scan.h"
#include "oxautils/generate/standard_files.h"

#include <QMap>

#include <algorithm>
#include <functional>

namespace OXA {

namespace {

QString escaped(const QString& name) { return '\\' + name + ' '; }

QStringList portDeclarations(const Design& design)
{
    QStringList lines;
    for (const DesignSignal& port : portsOf(design)) {
        const QString range = port.isVector() ? port.rangeText() + ' ' : QString();
        lines += port.kindText() + ' ' + range + escaped(port.flatName);
    }
    return lines;
}

QString parametersText(const QStringList& parameters)
{
    QStringList texts;
    for (const QString& parameter : parameters)
        texts
            += '.' + escaped(parameter.section('=', 0, 0)) + '(' + parameter.section('=', 1) + ')';
    return texts.isEmpty() ? QString() : "#(" + texts.join(", ") + ") ";
}

QString connection(const QString& port, const QString& net)
{
    return "    ." + port + '(' + net + ')';
}

/// "u_`what`", the name of an instance in the wrapper, changed when a port has it.
QString instanceName(const Design& design, const QString& what)
{
    QString name = "u_" + what;
    const QVector<DesignSignal> ports = portsOf(design);
    while (std::any_of(ports.begin(), ports.end(),
        [&](const DesignSignal& port) { return port.flatName == name; }))
        name += '_';
    return name;
}

/// The instance of the design in the wrapper.
QString designInstance(const Design& design, const QString& module, const QString& parameters)
{
    QStringList connections;
    for (const DesignSignal& port : portsOf(design))
        connections += connection(escaped(port.flatName), escaped(port.flatName));
    return escaped(module) + parameters + instanceName(design, "design") + " (\n"
        + connections.join(",\n") + "\n);\n";
}

bool isOutput(const QString& pad) { return pad.endsWith("_o"); }

QString moduleHead(const QString& name, const QStringList& ports)
{
    return "module " + escaped(name) + "(\n    " + ports.join(",\n    ") + "\n);\n";
}

/// The wire of a watched net; its bits count from 0 for any range of the net.
QString wireName(const QString& instance, const DesignSignal& signal)
{
    return escaped(instance + '.' + signal.flatName);
}

/// How a net is referred to from outside; null when Yosys joins the wires.
using NetPath = std::function<QString(const DesignSignal& signal)>;

QString watchedWires(
    const Design& design, const QVector<WatchedBit>& watched, const NetPath& pathOf)
{
    const QString instance = instanceName(design, "design");
    QMap<int, QString> wires; // by signal
    for (const WatchedBit& bit : watched) {
        const DesignSignal& signal = design.items.at(bit.bit.signal);
        const QString range
            = signal.width > 1 ? QString("[%1:0] ").arg(signal.width - 1) : QString();
        const QString wire = "wire " + range + wireName(instance, signal);
        wires[bit.bit.signal] = pathOf ? wire + "= " + pathOf(signal) + ";\n"
                                       : "(* hierconn, keep *) " + wire + ";\n";
    }
    return QStringList(wires.values()).join("");
}

/// The path through the scopes of the sources, from an instance of the top.
NetPath pathBelow(const QString& instance, const Design& design, const DesignSources& sources)
{
    return [instance, top = design.top.size() + 1, scan = SourceScan(sources.files)](
               const DesignSignal& signal) {
        return instance + '.' + scan.reference(signal.path.mid(top));
    };
}

QString analyzerInstance(const Design& design, const QVector<WatchedBit>& watched,
    const QStringList& pads, const QStringList& outputs)
{
    const QString instance = instanceName(design, "design");
    QStringList connections;
    for (const WatchedBit& bit : watched) {
        const DesignSignal& signal = design.items.at(bit.bit.signal);
        const QString index
            = signal.width > 1 ? '[' + QString::number(bit.bit.position) + ']' : QString();
        connections += connection(escapedSignalName(bit.name), wireName(instance, signal) + index);
    }
    const QStringList ports = jtagPads();
    for (int i = 0; i < ports.size(); ++i) {
        const QString unused = isOutput(ports.at(i)) ? "" : "1'b0";
        connections
            += connection(ports.at(i), pads.value(i).isEmpty() ? unused : escaped(pads.at(i)));
    }
    for (const QString& output : outputs)
        connections += connection(output, output);
    return "qx_oxa " + instanceName(design, "oxa") + " (\n" + connections.join(",\n") + "\n);\n";
}

}

QStringList jtagPads() { return {"tms_pad_i", "tck_pad_i", "tdi_pad_i", "tdo_pad_o"}; }

QStringList addedPorts(const AttachRequest& request)
{
    QStringList pads = request.pads;
    if (request.sharesClock)
        pads.removeAt(1);
    pads.removeAll({});
    return pads + request.outputs;
}

QVector<DesignSignal> portsOf(const Design& design)
{
    QVector<DesignSignal> ports;
    for (const DesignSignal& signal : design.items) {
        if (signal.direction != DesignSignal::Inside)
            ports += signal;
    }
    std::sort(ports.begin(), ports.end(),
        [](const DesignSignal& a, const DesignSignal& b) { return a.port < b.port; });
    return ports;
}

QString renamedTop(const Design& design) { return design.top + "_without_analyzer"; }

QByteArray wrapperText(const Design& design, const QString& name,
    const QVector<WatchedBit>& watched, const AttachRequest& request, bool byPath)
{
    QStringList ports = portDeclarations(design);
    for (const QString& port : addedPorts(request))
        ports += (isOutput(port) ? "output " : "input ") + port;
    const QString instance = byPath
        ? designInstance(design, design.top, parametersText(request.sources.parameters))
        : designInstance(design, renamedTop(design), {});
    return ("// Written by oxa attach: the design and its analyzer.\n" + moduleHead(name, ports)
        + instance
        + watchedWires(design, watched,
            byPath ? pathBelow(instanceName(design, "design"), design, request.sources) : NetPath())
        + analyzerInstance(design, watched, request.pads, request.outputs) + "endmodule\n")
        .toUtf8();
}

QByteArray besideText(const Design& design, const QString& instance,
    const QVector<WatchedBit>& watched, const DesignSources& sources, bool isFlat)
{
    const NetPath flat
        = [&](const DesignSignal& signal) { return instance + '.' + escaped(signal.flatName); };
    return (watchedWires(design, watched, isFlat ? flat : pathBelow(instance, design, sources))
        + analyzerInstance(design, watched, jtagPads(), {}))
        .toUtf8();
}

QByteArray plainWrapperText(const Design& design)
{
    return (moduleHead(design.top, portDeclarations(design))
        + designInstance(design, renamedTop(design), {}) + "endmodule\n")
        .toUtf8();
}

}
