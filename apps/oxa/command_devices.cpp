// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "part.h"
#include "table.h"

#include <dev/device_facts.h>
#include <dev/family_facts.h>

#include <QJsonArray>
#include <QRegularExpression>

namespace {

constexpr char kSummary[] = "List the parts of the device catalogue";

constexpr char kHelp[]
    = R"(PATTERN selects parts by part number or device name, in upper or lower case: any
part of the text, or with * and ? the whole text.

  oxa devices QX1N-9          every part of these devices
  oxa devices "*-QFN88-I?"    every industrial part in this package

--families lists the values of --for and --link for `oxa generate` and `oxa attach`:
families of devices that are not in the catalogue, the links by which a client reaches
an analyzer in them, and the files written for each.

The built-in catalogue contains made-up data; share/device/README.md explains how to
use a vendor's catalogue.)";

constexpr Table::Column kColumns[] = {
    {"PART",        Table::Left },
    {"DEVICE",      Table::Left },
    {"PACKAGE",     Table::Left },
    {"SPEED",       Table::Left },
    {"VARIANT",     Table::Left },
    {"GRADE",       Table::Left },
    {"LUTS",        Table::Right},
    {"REGISTERS",   Table::Right},
    {"I/OS",        Table::Right},
    {"SHADOW SRAM", Table::Right},
    {"BLOCK SRAM",  Table::Right},
};

constexpr Table::Column kFamilyColumns[] = {
    {"FAMILY",      Table::Left},
    {"DEVICES",     Table::Left},
    {"YOSYS",       Table::Left},
    {"LINK",        Table::Left},
    {"PADS",        Table::Left},
    {"OPENOCD",     Table::Left},
    {"CONSTRAINTS", Table::Left},
};

struct Options {
    QString pattern;
    QString deviceDb;
    bool families = false;
    bool json = false;
};

QRegularExpression patternOf(const QString& text)
{
    const bool whole = text.contains('*') || text.contains('?');
    QString pattern = QRegularExpression::escape(text);
    pattern.replace("\\*", ".*").replace("\\?", ".");
    if (whole)
        pattern = QRegularExpression::anchoredPattern(pattern);
    return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption);
}

QList<DEV::ChipInfo> matchingChips(const QString& text)
{
    const QRegularExpression pattern = patternOf(text);
    QList<DEV::ChipInfo> matching;
    const QList<DEV::ChipInfo> chips = DEV::DeviceDb::instance().chips();
    for (const DEV::ChipInfo& chip : chips) {
        if (pattern.match(chip.partNumber).hasMatch() || pattern.match(chip.name).hasMatch())
            matching += chip;
    }
    return matching;
}

void printTable(TextOut& out, const QList<DEV::ChipInfo>& chips)
{
    Table table(kColumns);
    for (const DEV::ChipInfo& chip : chips) {
        const QString shadow = chip.resources.value(DEV::ShadowSramEntry);
        table.addRow(
            {chip.partNumber, chip.name, chip.package, chip.speed, chip.variant, chip.grade,
                chip.resources.value(DEV::LutEntry), chip.resources.value(DEV::RegisterEntry),
                chip.resources.value(DEV::IoEntry), shadow.isEmpty() ? "none" : shadow,
                chip.resources.value(DEV::BlockSramEntry) + " kbit"});
    }
    table.print(out);
}

void printJson(TextOut& out, const QList<DEV::ChipInfo>& chips)
{
    QJsonArray parts;
    for (const DEV::ChipInfo& chip : chips)
        parts += partJson(chip);
    out.setResult({
        {"parts", parts}
    });
}

/// The names of files as they are in the work directory.
QStringList boardFiles(const char* files)
{
    QStringList names;
    for (const QString& file : QString(files).split(' ', Qt::SkipEmptyParts))
        names += file.section('/', -1);
    return names;
}

/// The ports that it adds to a design.
QStringList padNames(const DEV::FamilyLink& link)
{
    QStringList names = DEV::padPorts(link);
    names.removeAll({});
    return names;
}

void printFamilies(TextOut& out)
{
    Table table(kFamilyColumns);
    for (const DEV::FamilyFacts& family : DEV::kFamilies) {
        for (const DEV::FamilyLink* link : DEV::linksOf(family))
            table.addRow({family.name, family.devices, family.synthesis, link->name,
                padNames(*link).join(' '), boardFiles(link->openOcd).join(' '),
                boardFiles(link->constraints).join(' ')});
    }
    table.print(out);
}

void printFamiliesJson(TextOut& out)
{
    const auto array
        = [](const char* files) { return QJsonArray::fromStringList(boardFiles(files)); };
    QJsonArray families;
    for (const DEV::FamilyFacts& family : DEV::kFamilies) {
        QJsonArray links;
        for (const DEV::FamilyLink* link : DEV::linksOf(family)) {
            links += QJsonObject {
                {"link",        link->name                                 },
                {"pads",        QJsonArray::fromStringList(padNames(*link))},
                {"verilog",     array(link->verilog)                       },
                {"openocd",     array(link->openOcd)                       },
                {"constraints", array(link->constraints)                   },
            };
        }
        families += QJsonObject {
            {"family",  family.name     },
            {"devices", family.devices  },
            {"yosys",   family.synthesis},
            {"links",   links           },
        };
    }
    out.setResult({
        {"families", families}
    });
}

int run(const Options& options, Io& io)
{
    if (options.families) {
        options.json ? printFamiliesJson(io.out) : printFamilies(io.out);
        return kDone;
    }
    if (!loadCatalogue({{}, {}, options.deviceDb}, io.err))
        return kUnusable;
    const QList<DEV::ChipInfo> chips = matchingChips(options.pattern);
    if (options.json)
        printJson(io.out, chips);
    else if (!chips.isEmpty())
        printTable(io.out, chips);
    if (!chips.isEmpty())
        return kDone;
    const QStringList nearest = nearestParts(options.pattern);
    io.err.error("no part or device matches \"" + options.pattern + "\""
        + (nearest.isEmpty() ? QString() : "; did you mean " + nearest.join(", ") + '?'));
    return kJobFailed;
}

}

void addDevices(CLI::App& app, Io& io, int& status)
{
    Command command(app, "devices", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    const Option pattern
        = command.text("PATTERN", options->pattern, "What to list (default: everything)");
    addCatalogueOption(command, options->deviceDb);
    command.flag("--families", options->families, "List families of devices instead of parts")
        .excludes(pattern);
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
