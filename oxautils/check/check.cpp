#include "oxautils/check/check.h"

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
}

template <typename Core>
void checkTogether(const QList<Core*>& cores, const DEV::ChipInfo* part, QList<Problem>& problems)
{
    AllCores configuration;
    configuration.part = part;
    for (int position = 0; position < cores.size(); ++position)
        configuration.cores += AnyCore(*cores.at(position), position);
    if (part) {
        OXA_TOOL::AnalyzerEstimate estimate(*part);
        for (const Core* core : cores) {
            estimate.add(*core);
            configuration.amounts += estimate.amounts();
        }
    }
    applyRules(configuration, problems);
    for (const AnyCore& core : qAsConst(configuration.cores))
        applyRules(core, problems);
}

QList<Problem> problemsOf(const QList<AoCore*>& cores, const DEV::ChipInfo* part, int depthFlag)
{
    QList<Problem> problems;
    checkTogether(cores, part, problems);
    const QString device = part ? part->name : QString();
    for (int position = 0; position < cores.size(); ++position)
        checkStandardCore({*cores.at(position), position, device, depthFlag}, problems);
    return problems;
}

QList<Problem> problemsOf(const QList<AOCore_Lite*>& cores, const DEV::ChipInfo* part)
{
    QList<Problem> problems;
    checkTogether(cores, part, problems);
    return problems;
}

QList<Problem> problemsOfCoresIn(
    const ConfigFile& file, const QString& path, const DEV::ChipInfo* part)
{
    QList<Problem> problems;
    if (file.lite) {
        const QList<AOCore_Lite*> cores = readCoresLite(file.root);
        problems = problemsOf(cores, part);
        qDeleteAll(cores);
    } else {
        const QList<AoCore*> cores = readCores(file.root, ExpressionText::Normalised);
        problems = problemsOf(cores, part, depthFlag(path));
        qDeleteAll(cores);
    }
    return problems;
}

bool isBefore(const Problem& a, const Problem& b)
{
    const auto key = [](const Place& place) {
        return std::make_tuple(
            place.line, place.column, place.core, place.expression, place.unit, place.port);
    };
    return key(a.place) < key(b.place);
}

}

QList<Problem> inDocumentOrder(QList<Problem> problems)
{
    std::stable_sort(problems.begin(), problems.end(), isBefore);
    return problems;
}

QList<Problem> checkConfigFile(const QString& path, const DEV::ChipInfo* part)
{
    const ConfigFile file(path);
    QList<Problem> problems;
    applyRules(file, problems);
    if (file.readable()) {
        problems += problemsOfCoresIn(file, path, part);
        for (Problem& problem : problems) {
            if (problem.place.line == 0)
                file.locate(problem.place);
        }
    }
    return inDocumentOrder(problems);
}

QList<Problem> checkCores(const QList<AoCore*>& cores, const DEV::ChipInfo* part)
{
    return inDocumentOrder(problemsOf(cores, part, kSavedAsOxa));
}

QList<Problem> checkCores(const QList<AOCore_Lite*>& cores, const DEV::ChipInfo* part)
{
    return inDocumentOrder(problemsOf(cores, part));
}

QList<RuleInfo> checkRules()
{
    QList<RuleInfo> infos;
    for (const Rule& rule : rules())
        infos.append({rule.name, rule.severity, rule.meaning, rule.hint});
    return infos;
}

}
