// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/data_depth.h"
#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/encoding/match_registers.h"
#include "oxautils/encoding/trigger_expression.h"
#include "oxautils/generate/device_rules.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/verilog_file.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/log_categories.h"

#include <cmath>

namespace OXA {

namespace {

constexpr int kUnusedPortWidth = 8; // a port without signals: the cores need a width above 0
constexpr int kUnusedCounterWidth = 8; // of a unit that is switched off

/// The define for a memory: `prefix` and BSRAM, REG or SSRAM; nothing for other codes.
void writeStorage(QTextStream& out, const QString& prefix, int storage, bool shadowSram)
{
    static constexpr const char* kStorages[] = {"BSRAM", "REG", "SSRAM"};
    if (storage < BlockSram || storage > ShadowSram)
        return;
    const bool missing = storage == ShadowSram && !shadowSram;
    out << prefix << kStorages[missing ? BlockSram : storage] << '\n';
}

// The format's rule: the logarithm has single precision, which changes the result for some depths.
double segmentOf(int depth) { return double(std::log(float(depth))) / 0.6931472 - 1.0; }

void writeEventDefines(QTextStream& out, const QList<AoCore*>& cores, const AoCore& core)
{
    const QString prefix = QString("`define CORE%1_DEF_").arg(core.index);
    if (!forcingPlaces(cores, core).isEmpty())
        out << prefix << "FORCED_BY\n";
    if (forcesOthers(cores, core))
        out << prefix << "PULSE\n";
    if (core.events.triggerOut)
        out << prefix << "TRIGGER_OUT\n";
    if (core.events.stamps)
        out << prefix << "STAMPS\n";
}

void writeDefines(QTextStream& out, const AoCore& core, const DEV::ChipInfo& chip)
{
    const QString number = QString::number(core.index);
    const QString prefix = "`define CORE" + number + "_";
    const bool shadowSram = hasShadowSram(chip);

    out << prefix << "DEF_SIGNAL_IN_EN\n";
    for (const TriggerPort* port : core.availableTriggers())
        out << prefix << "DEF_TRIG_" << port->index << "_EN\n";
    if (core.expressionType == DynamicExpressions) {
        out << "`define DYNAMIC_EXPRESSION_" << number << '\n';
        for (int i = 0; i < core.expressions.size(); ++i)
            out << "`define EXPRESSION_" << i << "_EN_" << number << '\n';
        writeStorage(out, prefix + "DEF_SYN_DYNAMIC_", core.exImplementation, shadowSram);
    }
    writeStorage(out, prefix + "DEF_SYN_", core.implementation, shadowSram);
    if (needsZvDefine(chip))
        out << "`define ZV1_EN\n";
    if (core.forceTriggerByFallingEdge)
        out << "`define FORCE_REG_CAPTURE_F_" << number << '\n';
    if (core.captureInitDataEnabled)
        out << prefix << "DEF_CAPTURE_INIT_DATA\n";
    out << prefix << "SEG" << segmentOf(core.storageDepth) << '\n';
    if (!core.storage.isDefault())
        out << prefix << "DEF_STORE_"
            << (core.storage.keep == CoreStorage::When ? "WHEN" : "CHANGES") << '\n';
}

QString binary(int value, int digits)
{
    return QString::number(value, 2).rightJustified(digits, '0');
}

void writePort(QTextStream& out, const TriggerPort& port)
{
    const bool used = !port.signalList.isEmpty();
    const int width = used ? port.singleSignals().size() : kUnusedPortWidth;
    out << "parameter CAPTURE_TRIG_" << port.index << " = 1;\n"
        << "parameter TRIG_PORT_WIDTH_" << port.index << " = " << width << ";\n";
}

// The format's rule: a disabled unit's counter is 8 bits wide, an enabled one's without counter 0.
int counterWidthOf(const MatchUnit& unit)
{
    return !unit.enabled ? kUnusedCounterWidth : unit.counterEnable ? unit.counterWidth : 0;
}

void writeUnit(QTextStream& out, const MatchUnit& unit)
{
    const int k = unit.index;
    const bool bound = unit.enabled && unit.trigger;
    out << "parameter MATCH_EN_" << k << " = " << int(unit.enabled) << ";\n"
        << "parameter MATCH_CNT_WIDTH_" << k << " = " << counterWidthOf(unit) << ";\n"
        << "parameter MATCH_TYPE_" << k << " = 3'b" << binary(unit.matchType, 3) << ";\n"
        << "parameter MATCHER_" << k << " = 4'b" << binary(bound ? unit.trigger->index : 0, 4)
        << ";\n";
}

void writeStorageParameters(QTextStream& out, const AoCore& core)
{
    QString watch; // the first signal is the most significant
    for (const bool watched : watchedForChanges(core))
        watch += watched ? '1' : '0';
    out << "parameter STORE_GAP_BITS = " << core.storage.gapBits << ";\n"
        << "parameter STORE_LIMIT = 32'h" << QString::number(core.storage.limit, 16) << ";\n"
        << "parameter STORE_WATCH = " << watch.size() << "'b" << watch << ";\n";
}

void writeParameters(QTextStream& out, const AoCore& core)
{
    const int signalCount = core.dataSignals().size();
    out << "parameter DATA_OUT_SHIFT_WIDTH = " << core.dataOutShiftWidth() << ";\n"
        << "parameter MEM_DATA_WIDTH = " << signalCount + 1 << ";\n"
        << "parameter SIG_PORT_WIDTH = " << signalCount << ";\n"
        << "parameter CAPTURE_DATA = 1;\n"
        << "parameter TRIG_OUT_EN = 0;\n"
        << "parameter MAX_TRIG_LEVELS = " << core.expressions.size() << ";\n"
        << "parameter NUM_TRIG_PORTS = " << core.availableTriggers().size() << ";\n"
        << "parameter STORAGE_DEPTH = " << core.storageDepth << ";\n"
        << "parameter TRIG_TYPE = " << core.trigType << ";\n";
    for (const TriggerPort* port : core.triggers)
        writePort(out, *port);
    for (const MatchUnit* unit : core.matchUnits)
        writeUnit(out, *unit);
    if (!core.storage.isDefault())
        writeStorageParameters(out, core);
}

void writeForcedBy(QTextStream& out, const QList<int>& places)
{
    int mask = 0;
    for (const int place : places)
        mask |= 1 << place;
    if (mask)
        out << "parameter FORCED_BY = 16'h" << QString::number(mask, 16) << ";\n";
}

/// `text` with unit names replaced by their outputs, also of units that do not exist.
QString verilogOf(const QString& text)
{
    QString verilog;
    for (const Token& token : tokensOf(text)) {
        const QString piece = text.mid(token.start, token.text.size());
        const bool named = token.kind == Token::Unit && piece.size() > 1;
        verilog += named ? "match[" + piece.mid(1) + ']' : piece;
    }
    return verilog;
}

void writeExpressions(QTextStream& out, const AoCore& core)
{
    for (int i = 0; i < std::max(kMostExpressions, int(core.expressions.size())); ++i) {
        const QString text = verilogOf(core.expressions.value(i, "1"));
        out << "`define CORE" << core.index << "_DF_AO_EXPRESSION_" << i << "  " << text << '\n';
    }
    if (core.storage.keep == CoreStorage::When)
        out << "`define CORE" << core.index << "_DF_AO_WHEN  " << verilogOf(core.storage.when)
            << '\n';
}

void warnOfUnboundUnits(const AoCore& core, int position)
{
    for (const MatchUnit* unit : core.enabledMatchUnits()) {
        if (!unit->trigger)
            qCWarning(logGenerate, "core %d: M%d is enabled but watches no trigger port", position,
                unit->index);
    }
}

bool writeCoreFiles(const OxaArg& arg, const QList<AoCore*>& cores, int position)
{
    AoCore* core = cores.at(position);
    const QString directory = coreDirectory(arg.workDir, position);
    const DEV::ChipInfo chip = chipOf(arg);
    const int flag = depthFlag(arg.configFile);
    warnOfUnboundUnits(*core, position);
    return writeVerilogFile(directory, AO_TOP_DEFINE_FILE_NAME, [&](QTextStream& out) {
        writeDefines(out, *core, chip);
        writeEventDefines(out, cores, *core);
    }) && writeVerilogFile(directory, AO_PARAMETER_FILE_NAME, [&](QTextStream& out) {
        writeParameters(out, *core);
        writeForcedBy(out, forcingPlaces(cores, *core));
    }) && writeVerilogFile(directory, AO_EXPRESSION_FILE_NAME, [&](QTextStream& out) {
        writeExpressions(out, *core);
    }) && writeVerilogFile(directory, AO_CAPTUREINIT_FILE_NAME, [&](QTextStream& out) {
        generateRegister(core, out, arg.package, flag);
        if (core->expressionType == DynamicExpressions)
            generateExpression(core, out);
    });
}

}

bool std_generateFilesForAoCore(const OxaArg& arg, const QList<AoCore*>& cores)
{
    for (int position = 0; position < cores.size(); ++position) {
        if (!writeCoreFiles(arg, cores, position))
            return false;
    }
    return true;
}

}
