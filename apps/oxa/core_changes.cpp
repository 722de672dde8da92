// SPDX-License-Identifier: Apache-2.0
#include "core_changes.h"

#include "files/fail.h"
#include "oxautils/encoding/events_text.h"
#include "oxautils/encoding/signals_text.h"
#include "oxautils/encoding/storage_text.h"
#include "oxautils/model/limits.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

using namespace OXA;
using OXA_CAPTURE::Messages;

namespace {

constexpr char kNone[] = "none"; // removes the expression, or the port's signals

/// One option: the core, the name within it and the new text or number.
struct Change {
    int core = -1; ///< a position
    QString name; ///< "M3"
    QString value;
};

int coreCount(const Configuration& configuration)
{
    return configuration.cores.size() + configuration.liteCores.size();
}

/// The position that `text` names, or that of the only core when it is empty.
bool findCore(const QString& text, const Configuration& configuration, int& core, QString* error)
{
    return corePlaceFromText(text, coreCount(configuration), core, error);
}

/// Splits "CORE.NAME=VALUE"; `name` is a regular expression.
bool splitNamed(const QString& text, const QString& name, const char* example,
    const Configuration& configuration, Change& change, QString* error)
{
    const QRegularExpression form(
        "^(?:(\\d+)\\.)?(" + name + ")\\s*=(.*)$", QRegularExpression::DotMatchesEverythingOption);
    const auto match = form.match(text);
    if (!match.hasMatch())
        return fail(error, QString("write it like %1, or 0.%1 for core 0").arg(example));
    change.name = match.captured(2);
    change.value = match.captured(3);
    return findCore(match.captured(1), configuration, change.core, error);
}

bool splitUnit(
    const QString& text, const Configuration& configuration, Change& change, QString* error)
{
    return splitNamed(text, "M(?:\\d|1[0-5])", "M3=T0 == 5", configuration, change, error);
}

bool splitPort(
    const QString& text, const Configuration& configuration, Change& change, QString* error)
{
    return splitNamed(text, "T(?:\\d|1[0-5])", "T0=SIGNAL, SIGNAL", configuration, change, error);
}

bool splitLevel(
    const QString& text, const Configuration& configuration, Change& change, QString* error)
{
    return splitNamed(text, "\\d{1,2}", "0=M1 && M2", configuration, change, error);
}

bool splitSetting(
    const QString& text, const Configuration& configuration, Change& change, QString* error)
{
    const int equals = text.indexOf('=');
    change.value = text.mid(equals + 1);
    return findCore(text.left(qMax(equals, 0)), configuration, change.core, error);
}

// A text without a core may have a "=" in a name.
bool splitStore(
    const QString& text, const Configuration& configuration, Change& change, QString* error)
{
    static const QRegularExpression form(
        "^(?:\\s*(\\d+)\\s*=)?(.*)$", QRegularExpression::DotMatchesEverythingOption);
    const auto match = form.match(text);
    change.value = match.captured(2);
    return findCore(match.captured(1), configuration, change.core, error);
}

bool setPort(const Change& change, AoCore& core, QString* error)
{
    QList<SignalItem>& items = core.getTrigger(change.name.mid(1).toInt())->signalList;
    if (change.value.trimmed() != kNone)
        return signalsFromText(change.value, core, items, error);
    items.clear();
    return true;
}

bool setUnit(const Change& change, AoCore& core, const ValueNames& names, QString* error)
{
    MatchUnit& unit = *core.matchUnit(change.name.mid(1).toInt());
    return unitFromText(change.value, unit, error, names);
}

/// Sets or adds an expression. One to be removed goes into `removed`: it keeps its place until all
/// options are applied, so that their numbers are those of the file.
bool setExpression(const Change& change, AoCore& core, QSet<int>& removed, QString* error)
{
    const int level = change.name.toInt();
    const int count = core.expressions.size();
    const bool removes = change.value.trimmed() == kNone;
    if (level > count || (removes && level == count))
        return fail(
            error, QString("the core has %1 expressions, numbered from 0; %1 adds one").arg(count));
    const QString text
        = expressionFromText(change.value, core.expressionType == DynamicExpressions);
    if (removes)
        removed += level;
    else if (level == count)
        core.expressions += text;
    else
        core.expressions[level] = text;
    return true;
}

void removeExpressions(AoCore& core, const QSet<int>& removed)
{
    for (int level = core.expressions.size() - 1; level >= 0; --level) {
        if (removed.contains(level))
            core.expressions.removeAt(level);
    }
}

/// The number that `text` represents.
bool readValue(const CoreSetting& setting, const QString& text, int& value, QString* error)
{
    QStringList words;
    for (int i = 0; i < setting.words.count; ++i) {
        words += setting.words.list[i];
        if (text.compare(words.last(), Qt::CaseInsensitive) == 0)
            value = i;
    }
    bool ok = value >= 0;
    if (words.isEmpty())
        value = text.toInt(&ok);
    if (ok)
        return true;
    return fail(error,
        words.isEmpty() ? QString("\"%1\" is not an integer of 32 bits").arg(text)
                        : QString("\"%1\" is not one of \"%2\"").arg(text, words.join("\", \"")));
}

bool setSetting(
    const CoreSetting& setting, const Change& change, Configuration& configuration, QString* error)
{
    int value = -1;
    const bool lite = configuration.mode == Lite;
    if (lite ? !setting.setLite : !setting.set)
        return fail(error, QString("%1 cores do not have it").arg(lite ? "Lite" : "Standard"));
    if (!readValue(setting, change.value, value, error))
        return false;
    if (lite)
        setting.setLite(*configuration.liteCores.at(change.core), value);
    else
        setting.set(*configuration.cores.at(change.core), value);
    return true;
}

/// Applies each of the option's `texts`.
template <typename Split, typename Apply>
void changeEach(const char* option, const QStringList& texts, const Configuration& configuration,
    Messages& problems, const Split& split, const Apply& apply)
{
    for (const QString& text : texts) {
        Change change;
        QString error;
        if (!split(text, configuration, change, &error) || !apply(change, &error))
            problems.append({QString(option) + ' ' + text, error});
    }
}

/// `set` for the cores of a Standard configuration; others have no `missing`.
template <typename Set>
auto standardOnly(
    const Configuration& configuration, const Set& set, const char* missing = "trigger")
{
    return [&configuration, set, missing](const Change& change, QString* error) {
        return configuration.mode == Lite
            ? fail(error, QString("Lite cores have no %1").arg(missing))
            : set(change, *configuration.cores.at(change.core), error);
    };
}

void changeForcing(const QStringList& texts, const Configuration& configuration, Messages& problems)
{
    for (const QString& text : texts) {
        int core = 0;
        QList<int> forcing;
        QString error = "Lite cores have no trigger";
        if (configuration.mode != Lite
            && forcedByFromText(text, coreCount(configuration), core, forcing, &error))
            setForcingPlaces(configuration.cores, *configuration.cores.at(core), forcing);
        else
            problems.append({"--forced-by " + text, error});
    }
}

}

const std::vector<CoreSetting>& coreSettings()
{
    static const std::vector<CoreSetting> settings {
  // clang-format off
        {"--samples", "N", "Samples in each window; Lite cores: in the memory", true, {},
            [](AoCore& core, int value) { core.captureAmount = value; },
            [](AOCore_Lite& core, int value) { core.captureAmount = value; }},
        {"--position", "N", "Samples in each window before its trigger", true, {},
            [](AoCore& core, int value) { core.triggerPos = value; }, nullptr},
        {"--windows", "N", "Windows in a run", true, {},
            [](AoCore& core, int value) { core.windowNum = value; }, nullptr},
        {"--depth", "N", "Samples in the memory, for all windows", false, {},
            [](AoCore& core, int value) { core.storageDepth = value; }, nullptr},
        {"--memory", "KIND", "For samples: block SRAM, registers or shadow SRAM", false, kMemoryWords,
            [](AoCore& core, int value) { core.implementation = value; },
            [](AOCore_Lite& core, int value) { core.implementation = value; }},
        {"--edge", "EDGE", "Active edge of the sample clock: rising or falling", false, kEdgeWords,
            [](AoCore& core, int value) { core.trigType = value; },
            [](AOCore_Lite& core, int value) { core.trigType = value; }},
        {"--expression-type", "TYPE", "Type of all expressions: static or dynamic",
            false, kExpressionWords,
            [](AoCore& core, int value) { core.expressionType = value; }, nullptr},
        {"--table-memory", "KIND", "Memory for the tables of dynamic expressions", false, kMemoryWords,
            [](AoCore& core, int value) { core.exImplementation = value; }, nullptr},
        {"--power-up", "SWITCH", "Capture from power-up on: on or off", false, kSwitchWords,
            [](AoCore& core, int value) { core.captureInitDataEnabled = value; },
            [](AOCore_Lite& core, int value) { core.captureInitDataEnabled = value; }},
        {"--force-falling", "SWITCH", "Force the trigger at the falling edge: on or off",
            false, kSwitchWords,
            [](AoCore& core, int value) { core.forceTriggerByFallingEdge = value; }, nullptr},
        {"--input-register", "SWITCH", "Input register of a Lite core: on or off", false, kSwitchWords,
            nullptr, [](AOCore_Lite& core, int value) { core.inputRegisterEnabled = value; }},
        {"--trigger-out", "SWITCH", "Output of the wrapper that is high at a trigger: on or off",
            false, kSwitchWords,
            [](AoCore& core, int value) { core.events.triggerOut = value; }, nullptr},
        {"--stamps", "SWITCH", "Number of a window's trigger sample in the run: on or off",
            false, kSwitchWords,
            [](AoCore& core, int value) { core.events.stamps = value; }, nullptr},
  // clang-format on
    };
    return settings;
}

void addCoreChanges(Command& command, CoreChanges& changes, Changed changed)
{
    if (changed == Changed::All)
        command.texts("--port", changes.ports, "The signals of a trigger port")
            .typeName("[CORE.]PORT=NAMES");
    command.texts("--unit", changes.units, "What a match unit compares")
        .typeName("[CORE.]UNIT=TEXT");
    command.texts("--expression", changes.expressions, "A trigger expression")
        .typeName("[CORE.]LEVEL=TEXT");
    command.texts("--store", changes.stores, "Which samples are stored: all, changes, when")
        .typeName("[CORE=]TEXT");
    command.texts("--forced-by", changes.forcedBys, "Cores whose triggers force another one")
        .typeName("CORE=CORES");
    for (size_t i = 0; i < coreSettings().size(); ++i) {
        const CoreSetting& setting = coreSettings()[i];
        if (changed == Changed::All || setting.inRuns)
            command.texts(setting.option, changes.settings[i], setting.help)
                .typeName(std::string("[CORE=]") + setting.value);
    }
}

void changeCores(const CoreChanges& changes, Configuration& configuration, Messages& problems)
{
    const std::vector<CoreSetting>& settings = coreSettings();
    for (size_t i = 0; i < settings.size(); ++i) {
        changeEach(settings[i].option, changes.settings.at(i), configuration, problems,
            splitSetting, [&](const Change& change, QString* error) {
                return setSetting(settings[i], change, configuration, error);
            });
    }
    changeEach("--port", changes.ports, configuration, problems, splitPort,
        standardOnly(configuration, setPort));
    changeEach("--unit", changes.units, configuration, problems, splitUnit,
        standardOnly(configuration, [&](const Change& change, AoCore& core, QString* error) {
            return setUnit(change, core, changes.valueNames, error);
        }));
    QHash<const AoCore*, QSet<int>> removed;
    changeEach("--expression", changes.expressions, configuration, problems, splitLevel,
        standardOnly(configuration, [&](const Change& change, AoCore& core, QString* error) {
            return setExpression(change, core, removed[&core], error);
        }));
    for (AoCore* core : qAsConst(configuration.cores))
        removeExpressions(*core, removed.value(core));
    changeEach("--store", changes.stores, configuration, problems, splitStore,
        standardOnly(
            configuration,
            [](const Change& change, AoCore& core, QString* error) {
                return storageFromText(change.value, core, error);
            },
            "choice of samples"));
    changeForcing(changes.forcedBys, configuration, problems);
}

const MatchUnit* changedUnit(const QString& text, const Configuration& configuration, int* core)
{
    Change change;
    if (!splitUnit(text, configuration, change, nullptr) || configuration.mode == Lite)
        return nullptr;
    *core = change.core;
    return configuration.cores.at(change.core)->matchUnit(change.name.mid(1).toInt());
}
