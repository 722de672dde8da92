// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/check.h"

#include "oxautils/check/checked.h"
#include "oxautils/check/rule.h"
#include "oxautils/config/config_reader.h"
#include "oxautils/encoding/data_depth.h"

#include <algorithm>
#include <tuple>

namespace OXA {

namespace {

constexpr int kSavedAsOxa = 0; // as `dataDepth` takes it

void checkStandardCore(const StandardCore& core, QList<Problem>& problems)
{
    applyRules(core, problems);
    for (const MatchUnit* unit : core.core.enabledMatchUnits())
        applyRules(Unit {*unit, core.position}, problems);
    for (int i = 0; i < core.core.expressions.size(); ++i)
        applyRules(Expression(core.core, core.position, i), problems);
    if (core.core.storage.keep == CoreStorage::When)
        applyRules(Expression(core.core, core.position), problems);
}

template <typename Core>
void checkTogether(const QList<Core*>& cores, const DEV::ChipInfo* part, Checked& checked)
{
    AllCores configuration;
    configuration.part = part;
    for (int position = 0; position < cores.size(); ++position)
        configuration.cores += AnyCore(cores, position);
    if (part) {
        OXA_TOOL::AnalyzerEstimate estimate(*part);
        for (const Core* core : cores) {
            estimate.add(*core);
            configuration.amounts += estimate.amounts();
        }
        checked.amounts = estimate.amounts();
    }
    applyRules(configuration, checked.problems);
    for (const AnyCore& core : qAsConst(configuration.cores))
        applyRules(core, checked.problems);
}

void checkAll(
    const QList<AoCore*>& cores, const DEV::ChipInfo* part, int depthFlag, Checked& checked)
{
    checkTogether(cores, part, checked);
    const QString device = part ? part->name : QString();
    for (int position = 0; position < cores.size(); ++position)
        checkStandardCore({*cores.at(position), position, device, depthFlag}, checked.problems);
}

void checkCoresIn(
    const ConfigFile& file, const QString& path, const DEV::ChipInfo* part, Checked& checked)
{
    if (file.lite) {
        const QList<AOCore_Lite*> cores = readCoresLite(file.root);
        checkTogether(cores, part, checked);
        qDeleteAll(cores);
    } else {
        const QList<AoCore*> cores = readCores(file.root, ExpressionText::Normalised);
        checkAll(cores, part, depthFlag(path), checked);
        qDeleteAll(cores);
    }
}

bool isBefore(const Problem& a, const Problem& b)
{
    const auto key = [](const Place& place) {
        return std::make_tuple(place.line, place.column, place.core, place.storage, place.events,
            place.expression, place.unit, place.port);
    };
    return key(a.place) < key(b.place);
}

}

QList<Problem> inDocumentOrder(QList<Problem> problems)
{
    std::stable_sort(problems.begin(), problems.end(), isBefore);
    return problems;
}

Checked checkFile(const QString& path, const DEV::ChipInfo* part)
{
    const ConfigFile file(path);
    Checked checked;
    applyRules(file, checked.problems);
    if (file.readable()) {
        checkCoresIn(file, path, part, checked);
        for (Problem& problem : checked.problems) {
            if (problem.place.line == 0)
                file.locate(problem.place);
        }
    }
    checked.problems = inDocumentOrder(checked.problems);
    return checked;
}

Place placeOfSignal(const QString& path, const QString& name)
{
    return ConfigFile(path).placeOfSignal(name);
}

QList<Problem> checkConfigFile(const QString& path, const DEV::ChipInfo* part)
{
    return checkFile(path, part).problems;
}

QList<Problem> checkCores(const QList<AoCore*>& cores, const DEV::ChipInfo* part)
{
    Checked checked;
    checkAll(cores, part, kSavedAsOxa, checked);
    return inDocumentOrder(checked.problems);
}

QList<Problem> checkCores(const QList<AOCore_Lite*>& cores, const DEV::ChipInfo* part)
{
    Checked checked;
    checkTogether(cores, part, checked);
    return inDocumentOrder(checked.problems);
}

QList<RuleInfo> checkRules()
{
    QList<RuleInfo> infos;
    for (const Rule& rule : rules())
        infos.append({rule.name, rule.severity, rule.meaning, rule.hint});
    return infos;
}

}
