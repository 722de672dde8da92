// SPDX-License-Identifier: Apache-2.0
#include "completion.h"

#include "core_changes.h"
#include "part.h"

#include "oxautils/config/configuration.h"
#include "oxautils/encoding/events_text.h"
#include "oxautils/encoding/signals_text.h"
#include "oxautils/encoding/storage_text.h"
#include "oxautils/encoding/unit_text.h"
#include "oxautils/model/shown_text.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QMap>
#include <dev/family_facts.h>

namespace {

/// A word with its description.
struct Candidate {
    QString text, about;
};

using Candidates = QList<Candidate>;

/// What the words before the one to complete say.
struct Call {
    const CLI::App* command = nullptr;
    QMap<QString, QString> values; ///< the last one of each option
    QStringList arguments;
    const CLI::Option* open = nullptr; ///< the option whose value comes next
};

QString nameOf(const CLI::Option& option)
{
    return QString::fromStdString(option.get_lnames().empty() ? '-' + option.get_snames().front()
                                                              : "--" + option.get_lnames().front());
}

const CLI::Option* findOption(const CLI::App& command, const QString& name)
{
    for (const CLI::Option* option : command.get_options()) {
        if (option->nonpositional() && option->check_name(name.toStdString()))
            return option;
    }
    return nullptr;
}

Call callOf(const CLI::App& command, const QStringList& words)
{
    Call call;
    call.command = &command;
    for (const QString& word : words) {
        if (word.startsWith('-') && word.size() > 1) {
            call.open = findOption(command, word.section('=', 0, 0));
            const bool ends
                = call.open && (word.contains('=') || call.open->get_expected_max() == 0);
            if (call.open && word.contains('='))
                call.values[nameOf(*call.open)] = word.section('=', 1);
            call.open = ends ? nullptr : call.open;
        } else if (call.open) {
            call.values[nameOf(*call.open)] = word;
            call.open = call.open->get_expected_max() > 1 ? call.open : nullptr;
        } else {
            call.arguments += word;
        }
    }
    return call;
}

Candidates plain(const QStringList& texts)
{
    Candidates words;
    for (const QString& text : texts)
        words += Candidate {text, {}};
    return words;
}

/// Part numbers or devices of the catalogue that the call names.
Candidates partWords(const Call& call, bool parts, bool devices)
{
    QString ignored;
    TextOut silent(&ignored);
    Candidates words;
    if (!loadCatalogue({{}, {}, call.values.value("--device-db")}, silent))
        return words;
    const QString part = call.values.value("--part");
    for (const DEV::ChipInfo& chip : DEV::DeviceDb::instance().chips()) {
        if (parts)
            words += Candidate {chip.partNumber, chip.name};
        if (devices && (part.isEmpty() || chip.partNumber == part))
            words += Candidate {chip.name, {}};
    }
    return words;
}

Candidates familyWords(const Call&)
{
    Candidates words;
    for (const DEV::FamilyFacts& family : DEV::kFamilies)
        words += Candidate {family.name, family.devices};
    return words;
}

Candidates linkWords(const Call& call)
{
    Candidates words;
    if (const DEV::FamilyFacts* family = DEV::familyFacts(call.values.value("--for"))) {
        for (const DEV::FamilyLink* link : DEV::linksOf(*family))
            words += Candidate {link->name, {}};
    }
    return words;
}

/// Reads the configuration that the call names first.
bool readFile(const Call& call, OXA::Configuration& configuration)
{
    QString file = call.arguments.value(0);
    if (file.startsWith("~/"))
        file.replace(0, 1, QDir::homePath());
    return !file.isEmpty() && OXA::readConfiguration(file, configuration, nullptr);
}

/// What `add` finds in each core of the call's configuration; it gets what the words of the core
/// begin with.
template <typename Add> Candidates coreWords(const Call& call, const Add& add)
{
    OXA::Configuration configuration;
    Candidates words;
    if (!readFile(call, configuration))
        return words;
    const bool several = configuration.cores.size() > 1 && call.command->get_name() == "set";
    for (int i = 0; i < int(configuration.cores.size()); ++i)
        add(*configuration.cores.at(i), several ? QString::number(i) + '.' : QString(), words);
    return words;
}

/// The units that `fits` selects.
template <typename Fits> Candidates unitsThat(const Call& call, const Fits& fits)
{
    return coreWords(
        call, [&fits](const OXA::AoCore& core, const QString& start, Candidates& words) {
            for (const OXA::MatchUnit* unit : core.matchUnits) {
                if (fits(*unit))
                    words += Candidate {QString("%1M%2=").arg(start, QString::number(unit->index)),
                        unit->enabled ? OXA::unitText(*unit) : QString("off")};
            }
        });
}

Candidates unitWords(const Call& call)
{
    const bool all = call.command->get_name() == "set";
    return unitsThat(call, [all](const OXA::MatchUnit& unit) { return all || unit.enabled; });
}

Candidates portWords(const Call& call)
{
    return coreWords(call, [](const OXA::AoCore& core, const QString& start, Candidates& words) {
        for (const auto& port : core.triggers)
            words += Candidate {QString("%1T%2=").arg(start, QString::number(port->index)),
                OXA::signalsText(port->signalList)};
    });
}

Candidates expressionWords(const Call& call)
{
    return coreWords(call, [](const OXA::AoCore& core, const QString& start, Candidates& words) {
        for (int i = 0; i <= int(core.expressions.size()); ++i)
            words += Candidate {
                start + QString::number(i) + '=', core.expressions.value(i, "a new one")};
    });
}

Candidates storeWords(const Call& call)
{
    return coreWords(call, [](const OXA::AoCore& core, QString start, Candidates& words) {
        start.replace('.', '=');
        for (const char* keep : OXA::kKeepWords)
            words += Candidate {start + keep, OXA::storageText(core.storage)};
    });
}

/// The first words of `--forced-by`: each core with none and with each of the others.
Candidates forcedByWords(const Call& call)
{
    OXA::Configuration configuration;
    Candidates words;
    if (!readFile(call, configuration))
        return words;
    const QList<OXA::AoCore*>& cores = configuration.cores;
    for (int place = 0; place < int(cores.size()); ++place) {
        const QString start = QString::number(place) + '=';
        words += Candidate {start + "none", OXA::eventsText(cores, *cores.at(place))};
        for (int other = 0; other < int(cores.size()); ++other) {
            if (other != place)
                words += Candidate {start + QString::number(other), cores.at(other)->sampleClock};
        }
    }
    return words;
}

Candidates coreIndexWords(const Call& call)
{
    return coreWords(call, [](const OXA::AoCore& core, const QString&, Candidates& words) {
        words += Candidate {QString::number(core.index), core.sampleClock};
    });
}

/// Options whose values depend on the rest of the call.
struct Values {
    const char* option;
    Candidates (*words)(const Call& call);
};

constexpr Values kValues[] = {
    {"--part",       [](const Call& call) { return partWords(call, true, false); }},
    {"--device",     [](const Call& call) { return partWords(call, false, true); }},
    {"--for",        familyWords                                                  },
    {"--link",       linkWords                                                    },
    {"--unit",       unitWords                                                    },
    {"--expression", expressionWords                                              },
    {"--store",      storeWords                                                   },
    {"--forced-by",  forcedByWords                                                },
    {"--core",       coreIndexWords                                               },
};

/// The words of a setting of `oxa set`, or those that the option accepts: "FORM:{a,b}".
QStringList fixedWords(const Call& call, const CLI::Option& option)
{
    QStringList words;
    for (const CoreSetting& setting : coreSettings()) {
        if (call.command->get_name() == "set" && nameOf(option) == setting.option) {
            for (int i = 0; i < setting.words.count; ++i)
                words += setting.words.list[i];
        }
    }
    const QString accepted = QString::fromStdString(option.get_type_name()).section(":{", 1);
    return accepted.isEmpty() ? words : accepted.section('}', 0, 0).split(',');
}

void print(const Candidates& words, const QString& start, const QString& before, TextOut& out)
{
    QStringList lines;
    for (const Candidate& word : words) {
        const bool printable = OXA::shownText(word.text) == word.text;
        if (printable && word.text.startsWith(start))
            lines += before + word.text + '\t' + OXA::shownText(word.about);
    }
    lines.removeDuplicates();
    out << "words\n";
    for (const QString& line : lines)
        out.listed(line);
}

/// Values of `option` that begin with `start`; `before` is printed in front of each.
void completeValue(const Call& call, const CLI::Option& option, const QString& start,
    const QString& before, TextOut& out)
{
    const QString name = nameOf(option);
    Candidates words = plain(fixedWords(call, option));
    for (const Values& values : kValues) {
        if (words.isEmpty() && name == values.option)
            words = values.words(call);
    }
    if (name == "--port" && call.command->get_name() == "set")
        words = portWords(call);
    static const QStringList kFileTypes {
        "FILE", "OUT", "WAVE", "NETLIST", "LIST", "TB.v", "[WRAPPER]", "DEVICE"};
    const QString type = QString::fromStdString(option.get_type_name());
    if (!words.isEmpty())
        print(words, start, before, out);
    else if (type == "DIR")
        out << "dirs\n";
    else if (kFileTypes.contains(type))
        out << (type == "OUT" && call.command->get_name() == "set" ? "oxa\n" : "files\n");
}

Candidates optionWords(const CLI::App& command)
{
    Candidates words;
    for (const CLI::Option* option : command.get_options()) {
        if (option->nonpositional())
            words += Candidate {nameOf(*option), QString::fromStdString(option->get_description())};
    }
    return words;
}

void completeArgument(const Call& call, const QString& start, TextOut& out)
{
    for (const CLI::Option* option : call.command->get_options()) {
        const std::string name = option->get_name();
        if (option->get_positional() && name == "FILE")
            out << "oxa\n";
        else if (option->get_positional() && name == "IN") // and OUT
            out << "files\n";
        else if (option->get_positional() && name == "PATTERN")
            print(partWords(call, true, true), start, {}, out);
    }
}

}

void complete(const CLI::App& app, const QStringList& words, TextOut& out)
{
    const QString current = words.value(words.size() - 1);
    if (words.size() < 2) {
        Candidates commands = optionWords(app);
        for (const CLI::App* command : app.get_subcommands({}))
            commands += Candidate {QString::fromStdString(command->get_name()),
                QString::fromStdString(command->get_description())};
        return print(commands, current, {}, out);
    }
    const CLI::App* command = nullptr;
    for (const CLI::App* one : app.get_subcommands({})) {
        if (one->get_name() == words.first().toStdString())
            command = one;
    }
    if (!command)
        return;
    const Call call = callOf(*command, words.mid(1, words.size() - 2));
    const QString name = current.section('=', 0, 0);
    const CLI::Option* named
        = current.startsWith("--") && current.contains('=') ? findOption(*command, name) : nullptr;
    if (named)
        completeValue(call, *named, current.section('=', 1), name + '=', out);
    else if (current.startsWith('-'))
        print(optionWords(*command), current, {}, out);
    else if (call.open)
        completeValue(call, *call.open, current, {}, out);
    else
        completeArgument(call, current, out);
}
