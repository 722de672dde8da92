// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/top_wrapper.h"
#include "oxautils/generate/verilog_file.h"
#include "oxautils/model/verilog_word.h"

namespace OXA {

namespace {

void writePulseNets(QTextStream& out, const QList<AoCore*>& cores)
{
    for (int position = 0; position < cores.size(); ++position) {
        if (forcesOthers(cores, *cores.at(position)))
            out << "wire " << pulseNet(position) << ";\n";
    }
}

/// The connections of a core for triggers.
void writeEvents(QTextStream& out, const QList<AoCore*>& cores, int position)
{
    const AoCore& core = *cores.at(position);
    QStringList forcing; // the lowest position in bit 0
    for (const int place : forcingPlaces(cores, core))
        forcing.prepend(pulseNet(place));
    if (!forcing.isEmpty())
        out << "    .pulses_i(" << concatenation(forcing) << "),\n";
    if (forcesOthers(cores, core))
        out << "    .pulse_o(" << pulseNet(position) << "),\n";
    if (core.events.triggerOut)
        out << "    .trigger_o(" << triggerOutput(position) << "),\n";
}

void writeAnalyzer(QTextStream& out, const QList<AoCore*>& cores, int position)
{
    const AoCore& core = *cores.at(position);
    out << "\nao_top_" << position << "  u_la" << position << "_top(\n"
        << "    .control(control" << position << "[9:0]),\n";
    for (const TriggerPort* port : core.availableTriggers())
        out << "    .trig" << port->index << "_i("
            << concatenation(escapedSignalNames(port->singleSignals())) << "),\n";
    out << "    .data_i(" << concatenation(escapedSignalNames(core.dataSignals())) << "),\n";
    writeEvents(out, cores, position);
    out << "    .clk_i(" << escapedSignalName(core.sampleClock) << ")\n"
        << ");\n";
}

}

bool std_generateOxaTop(const OxaArg& arg, const QList<AoCore*>& cores)
{
    logWordFaults(wordFaults(cores));
    QList<WatchedBits> bitsOfCores;
    for (const AoCore* core : cores)
        bitsOfCores += watchedBits(*core);
    // Users search logs for this spelling.
    return writeVerilogFile(arg.workDir + "/" + OXA_TOP_FILE_NAME,
        QString("failded to open result file."), [&](QTextStream& out) {
            writeTopWrapper(out, bitsOfCores, triggerOutputs(cores), [&cores](QTextStream& body) {
                writePulseNets(body, cores);
                for (int position = 0; position < cores.size(); ++position)
                    writeAnalyzer(body, cores, position);
            });
        });
}

}
