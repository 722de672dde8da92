// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/lite_files.h"

#include "oxautils/generate/device_rules.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/top_wrapper.h"
#include "oxautils/generate/verilog_file.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/verilog_word.h"

namespace OXA {

namespace {

void writeDefines(QTextStream& out, const AOCore_Lite& core, const DEV::ChipInfo& chip)
{
    const bool shadowMissing = core.implementation == ShadowSram && !hasShadowSram(chip);
    if (core.implementation == BlockSram || shadowMissing)
        out << "`define DEF_SYN_BSRAM\n";
    else if (core.implementation == ShadowSram)
        out << "`define DEF_SYN_SSRAM\n";
    if (core.inputRegisterEnabled)
        out << "`define DEF_INPUT_REG_EN\n";
    if (core.captureInitDataEnabled) {
        // The format's rule: repeated even after the flag above.
        if (shadowMissing)
            out << "`define DEF_INPUT_REG_EN\n";
        out << "`define DEF_CAPTURE_INIT_DATA\n";
    }
    if (core.dataSignals().size() == 1)
        out << "`define DEF_1BIT_MODE\n";
    if (needsZvDefine(chip))
        out << "`define ZV1_EN\n";
}

void writeParameters(QTextStream& out, const AOCore_Lite& core)
{
    if (core.trigType == 0 || core.trigType == 1)
        out << "parameter TRIG_TYPE = " << core.trigType << ";\n";
    out << "parameter STORAGE_DEPTH = " << core.captureAmount << ";\n";
    // The format's rule: all three are the same, because a Lite core stores no mark.
    for (const char* name : {"DATA_OUT_SHIFT_WIDTH", "MEM_DATA_WIDTH", "SIG_PORT_WIDTH"})
        out << "parameter " << name << " = " << core.dataSignals().size() << ";\n";
}

void writeAnalyzer(QTextStream& out, const AOCore_Lite& core)
{
    out << "\nao_top u_ao_top(\n"
        << "    .control(control0[9:0]),\n"
        << "    .data_i(" << concatenation(escapedSignalNames(core.dataSignals())) << "),\n"
        << "    .clk_i(" << escapedSignalName(core.sampleClock) << ")\n"
        << ");\n";
}

}

bool lite_generateFilesForAoCtrl(const OxaArg& arg, QList<AOCore_Lite*>)
{
    return writeVerilogFile(
        arg.workDir + "/" + NAME_CON, CON_TOP_DEFINE_FILE_NAME, [&](QTextStream& out) {
            out << "`define DEF_AO_0_EN\n`define DBG_SUPPORTED_AO_0\n";
            if (needsZvDefine(chipOf(arg)))
                out << "`define ZV1_EN\n";
        });
}

bool lite_generateFilesForAoCore(const OxaArg& arg, QList<AOCore_Lite*> cores)
{
    if (cores.isEmpty())
        return false;
    const QString directory = coreDirectory(arg.workDir, 0);
    const AOCore_Lite& core = *cores.first();
    return writeVerilogFile(directory, AO_TOP_DEFINE_FILE_NAME, [&](QTextStream& out) {
        writeDefines(out, core, chipOf(arg));
    }) && writeVerilogFile(directory, AO_PARAMETER_FILE_NAME, [&](QTextStream& out) {
        writeParameters(out, core);
    });
}

bool lite_generateOxaTop(const OxaArg& arg, QList<AOCore_Lite*> cores)
{
    if (cores.isEmpty())
        return false;
    logWordFaults(wordFaults(cores));
    QList<WatchedBits> bitsOfCores;
    for (const AOCore_Lite* core : qAsConst(cores))
        bitsOfCores += watchedBits(*core);
    return writeVerilogFile(arg.workDir + "/" + OXA_TOP_FILE_NAME,
        QString("failed to open result file."), [&](QTextStream& out) {
            writeTopWrapper(out, bitsOfCores, {},
                [&cores](QTextStream& body) { writeAnalyzer(body, *cores.first()); });
        });
}

}
