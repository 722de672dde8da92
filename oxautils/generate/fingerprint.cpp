// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/fingerprint.h"

#include "files/fail.h"
#include "oxautils/config/configuration.h"
#include "oxautils/encoding/crc32.h"
#include "oxautils/encoding/static_expression.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/model/limits.h"

#include <QFile>
#include <QSet>
#include <QtAlgorithms>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kNoDefine = 3; // the code of a storage without define

// Rows in which each expression is evaluated: the j-th enabled unit is the parity of the row and
// mask j.
constexpr quint32 kMasks[kUnits] = {1, 2, 4, 8, 16, 32, 7, 11, 13, 14, 19, 21, 22, 25, 26, 28};

constexpr const char* kStorages[] = {"BSRAM", "REG", "SSRAM"};

// A generated constant; bit 0 of word 0 is the lowest, all bits above the last one are `negative`.
struct Value {
    QByteArray name;
    std::vector<quint32> words;
    bool negative = false;

    quint32 word(size_t i) const { return i < words.size() ? words[i] : 0 - quint32(negative); }
};

// The generated files of one core.
struct Generated {
    QSet<QString> defines;
    std::vector<Value> parameters;
    std::vector<Value> initials;
};

quint32 digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return quint32(digit - '0');
    return digit >= 'a' && digit <= 'f' ? quint32(digit - 'a' + 10) : 0;
}

std::vector<quint32> wordsOf(const QByteArray& digits, int bitsPerDigit)
{
    std::vector<quint32> words;
    int bit = 0; // of the next digit
    for (int i = int(digits.size()) - 1; i >= 0; --i, bit = (bit + bitsPerDigit) % 32) {
        if (bit == 0)
            words.push_back(0);
        words.back() |= digitValue(digits.at(i)) << bit;
    }
    return words;
}

// "3'b101", "16'h00ff", "21" and, for a negative number, "16'h00-1".
Value parseValue(const QByteArray& name, const QByteArray& text)
{
    Value value;
    value.name = name;
    const int quote = int(text.indexOf('\''));
    const QByteArray digits = text.mid(quote + 2);
    const char* const minus = std::find(digits.begin(), digits.end(), '-');
    if (quote < 0 || minus != digits.end()) {
        const qint64 number = quote < 0 ? text.toLongLong() : -QByteArray(minus + 1).toLongLong();
        value.negative = number < 0;
        value.words = {quint32(number), quint32(number >> 32)};
        return value;
    }
    value.words = wordsOf(digits, text.mid(quote + 1).startsWith('b') ? 1 : 4);
    return value;
}

bool readLines(const QString& path, QList<QByteArray>& lines, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, path + ": " + file.errorString());
    lines = file.readAll().split('\n');
    lines.removeAll(QByteArray());
    return true;
}

bool readDefines(const QString& path, QSet<QString>& defines, QString* error)
{
    QList<QByteArray> lines;
    if (!readLines(path, lines, error))
        return false;
    for (const QByteArray& line : qAsConst(lines))
        defines += QString::fromUtf8(line).section(' ', 1, 1);
    return true;
}

bool readValues(const QString& path, std::vector<Value>& values, QString* error)
{
    static const QByteArray head("parameter ");
    static const QByteArray equals(" = ");
    QList<QByteArray> lines;
    if (!readLines(path, lines, error))
        return false;
    for (const QByteArray& line : qAsConst(lines)) {
        const int nameEnd = int(line.indexOf(equals));
        if (!line.startsWith(head) || !line.endsWith(';') || nameEnd <= head.size())
            return fail(error, path + ": unexpected \"" + QString::fromUtf8(line) + '"');
        const int start = nameEnd + int(equals.size());
        values.push_back(parseValue(line.mid(int(head.size()), nameEnd - int(head.size())),
            line.mid(start, int(line.size()) - start - 1)));
    }
    return true;
}

const Value* find(const std::vector<Value>& values, const QByteArray& name)
{
    for (const Value& value : values) {
        if (value.name == name)
            return &value;
    }
    return nullptr;
}

void addWord(Crc32& crc, quint32 word) { crc.add(word, 32); }

// The lowest `width` bits in whole words.
void addBits(Crc32& crc, const Value* value, int width)
{
    for (int bit = 0; bit < width; bit += 32) {
        const quint32 kept = width - bit < 32 ? (1U << (width - bit)) - 1 : ~0U;
        addWord(crc, value ? value->word(size_t(bit) / 32) & kept : 0);
    }
}

void addWord(Crc32& crc, const std::vector<Value>& values, const QByteArray& name)
{
    addBits(crc, find(values, name), 32);
}

int storageCode(const QSet<QString>& defines, const QString& prefix)
{
    for (int code = 0; code < 3; ++code) {
        if (defines.contains(prefix + kStorages[code]))
            return code;
    }
    return kNoDefine;
}

void addInitials(Crc32& crc, const Generated& generated, int width)
{
    for (const char* name :
        {"TRIG_LEVELS_INIT", "MAX_DATA_DEPTH_INIT", "DATA_DEPTH_INIT", "NUM_WINDOWS_INIT"})
        addWord(crc, generated.initials, name);
    for (int unit = 0; unit < kUnits; ++unit) {
        const QByteArray name = "MATCH" + QByteArray::number(unit);
        for (const char* reg : {"_REG_M0", "_REG_M1", "_REG_M2", "_REG_CTRL", "_TRIG_CNT"})
            addBits(crc, find(generated.initials, name + reg + "_INIT"), width);
    }
}

// Bit k is the output of unit k in row `row`.
quint32 outputsIn(quint32 row, const AoCore& core)
{
    quint32 outputs = 0;
    const quint32* mask = kMasks;
    for (const MatchUnit* unit : core.enabledMatchUnits())
        outputs |= quint32(qPopulationCount(row & *mask++) & 1) << unit->index;
    return outputs;
}

bool addStaticTable(Crc32& crc, const AoCore& core, const QString& expression, QString* error)
{
    const StaticExpression parsed = parseStatic(tokensOf(expression));
    const QString fault = parsed.fault.text();
    if (!fault.isEmpty())
        return fail(error, fault);
    const TruthTable table = staticTable(parsed);
    for (quint32 row = 0; row < 64; ++row) {
        const quint32 outputs = outputsIn(row, core);
        int address = 0;
        for (int bit = 0; bit < parsed.units.size(); ++bit)
            address |= int(outputs >> parsed.units.at(bit) & 1) << bit;
        crc.add(table.at(address));
    }
    return true;
}

bool addTables(Crc32& crc, const Generated& generated, const AoCore& core, QString* error)
{
    const int rows = 1 << core.enabledMatchUnits().size();
    for (int e = 0; e < core.expressions.size(); ++e) {
        if (core.expressionType == DynamicExpressions)
            addBits(crc, find(generated.initials, "EXPRESSION" + QByteArray::number(e) + "_INIT"),
                rows);
        else if (!addStaticTable(crc, core, core.expressions.at(e), error))
            return false;
    }
    if (core.storage.keep != CoreStorage::When)
        return true;
    if (core.expressionType != DynamicExpressions)
        return addStaticTable(crc, core, core.storage.when, error);
    addBits(crc, find(generated.initials, "WHEN_INIT"), rows);
    return true;
}

void addDefines(Crc32& crc, const QSet<QString>& defines, int index)
{
    const QString prefix = QString("CORE%1_DEF_").arg(index);
    quint32 ports = 0;
    for (int port = 0; port < kPorts; ++port)
        ports |= quint32(defines.contains(prefix + QString("TRIG_%1_EN").arg(port))) << port;
    addWord(crc, ports);
    addWord(crc, defines.contains(QString("DYNAMIC_EXPRESSION_%1").arg(index)));
    addWord(crc, quint32(storageCode(defines, prefix + "SYN_DYNAMIC_")));
    addWord(crc, quint32(storageCode(defines, prefix + "SYN_")));
    addWord(crc, defines.contains(QString("FORCE_REG_CAPTURE_F_%1").arg(index)));
    addWord(crc, defines.contains(prefix + "CAPTURE_INIT_DATA"));
    addWord(crc, defines.contains("ZV1_EN"));
}

void addEvents(Crc32& crc, const QSet<QString>& defines, int index)
{
    quint32 word = 0;
    int bit = 0;
    for (const char* name : {"PULSE", "TRIGGER_OUT", "STAMPS", "FORCED_BY"}) {
        const bool has
            = defines.contains(QString("CORE%1_DEF_%2").arg(QString::number(index), name));
        word |= quint32(has) << bit++;
    }
    if (word)
        addWord(crc, word << 16);
}

QString generatedFile(const QString& workDir, int position, const char* name)
{
    return QString("%1/%2%3/%4").arg(workDir, NAME_AO, QString::number(position), name);
}

}

bool generatedFingerprint(
    const QString& workDir, int position, const AoCore& core, quint32& fingerprint, QString* error)
{
    Generated generated;
    if (!readDefines(
            generatedFile(workDir, position, AO_TOP_DEFINE_FILE_NAME), generated.defines, error)
        || !readValues(
            generatedFile(workDir, position, AO_PARAMETER_FILE_NAME), generated.parameters, error)
        || !readValues(
            generatedFile(workDir, position, AO_CAPTUREINIT_FILE_NAME), generated.initials, error))
        return false;
    Crc32 crc;
    addWord(crc, 1);
    for (const Value& value : generated.parameters)
        addBits(crc, &value, value.name == "STORE_WATCH" ? int(core.dataSignals().size()) : 32);
    addInitials(crc, generated, core.dataOutShiftWidth());
    if (!addTables(crc, generated, core, error))
        return false;
    addDefines(crc, generated.defines, core.index);
    if (!core.storage.isDefault())
        addWord(crc, core.storage.keep);
    addEvents(crc, generated.defines, core.index);
    fingerprint = crc.sum();
    return true;
}

bool generatedLiteFingerprint(const QString& workDir, quint32& fingerprint, QString* error)
{
    Generated generated;
    if (!readDefines(generatedFile(workDir, 0, AO_TOP_DEFINE_FILE_NAME), generated.defines, error)
        || !readValues(
            generatedFile(workDir, 0, AO_PARAMETER_FILE_NAME), generated.parameters, error))
        return false;
    Crc32 crc;
    addWord(crc, 0);
    for (const char* name :
        {"TRIG_TYPE", "STORAGE_DEPTH", "DATA_OUT_SHIFT_WIDTH", "MEM_DATA_WIDTH", "SIG_PORT_WIDTH"})
        addWord(crc, generated.parameters, name);
    addWord(crc, quint32(storageCode(generated.defines, "DEF_SYN_")));
    for (const char* name :
        {"DEF_INPUT_REG_EN", "DEF_CAPTURE_INIT_DATA", "DEF_1BIT_MODE", "ZV1_EN"})
        addWord(crc, generated.defines.contains(name));
    fingerprint = crc.sum();
    return true;
}

bool generatedSums(
    const QString& workDir, const Configuration& configuration, BuildSums& sums, QString* error)
{
    sums = {};
    for (const AoCore* core : configuration.cores) {
        sums.fingerprints.push_back(0);
        sums.names += nameSums(*core);
        if (!generatedFingerprint(
                workDir, sums.names.size() - 1, *core, sums.fingerprints.back(), error))
            return false;
    }
    for (const AOCore_Lite* core : configuration.liteCores.mid(0, 1)) { // only this core is built
        sums.fingerprints.push_back(0);
        sums.names += nameSums(*core);
        if (!generatedLiteFingerprint(workDir, sums.fingerprints.back(), error))
            return false;
    }
    return true;
}

}
