// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "part.h"
#include "table.h"

#include "oxautils/voltage/voltage.h"

#include <QJsonArray>

namespace {

constexpr char kSummary[] = "Print the supply voltages that a part allows";

constexpr char kHelp[]
    = R"(Prints the range in volts, the usual choices and the default of the supplies VCC,
VCCX and VCC_LDO, and which supplies the package shorts together. Exit status 1: two
supplies are shorted, so they need the same voltage.

The table is share/device/pn_voltage.csv beside the program; README.md there explains
how to use a vendor's table.)";

constexpr Table::Column kColumns[] = {
    {"SUPPLY",  Table::Left },
    {"MINIMUM", Table::Right},
    {"MAXIMUM", Table::Right},
    {"DEFAULT", Table::Right},
    {"CHOICES", Table::Left },
};

struct Options {
    PartOptions part;
    bool json = false;
};

struct Supply {
    QString name;
    QString minimum;
    QString maximum;
    QStringList choices;
    QString standard; // the default
};

struct Supplies {
    QList<Supply> supplies;
    QList<QStringList> shorts; // pairs of names
};

Supplies suppliesOf(const OXA::Voltage& voltage)
{
    Supplies result;
    result.supplies.append({"VCC", voltage.getVCCMin(), voltage.getVCCMax(),
        voltage.getVCCOptionalValues(), voltage.getVCCDefaultValue()});
    result.supplies.append({"VCCX", voltage.getVCCXMin(), voltage.getVCCXMax(),
        voltage.getVCCXOptionalValues(), voltage.getVCCXDefaultValue()});
    result.supplies.append({"VCC_LDO", voltage.getVCCLDOMin(), voltage.getVCCLDOMax(),
        voltage.getVCCLDOOptionalValues(), voltage.getVCCLDODefaultValue()});
    if (voltage.isVCCVCCXShortCircuit())
        result.shorts.append(QStringList {"VCC", "VCCX"});
    if (voltage.isVCCXVCCLDOShortCircuit())
        result.shorts.append(QStringList {"VCCX", "VCC_LDO"});
    if (voltage.isVCCVCCLDOShortCircuit())
        result.shorts.append(QStringList {"VCC", "VCC_LDO"});
    return result;
}

void print(TextOut& out, const DEV::ChipInfo& chip, const Supplies& supplies)
{
    out << chip.partNumber << " (" << chip.name << ", " << chip.package << "), volts\n\n";
    Table table(kColumns);
    for (const Supply& supply : supplies.supplies) {
        const bool has = !supply.minimum.isEmpty() || !supply.maximum.isEmpty();
        table.addRow({supply.name, has ? supply.minimum : "-", has ? supply.maximum : "-",
            has ? supply.standard : "-", has ? supply.choices.join(", ") : "no such supply"});
    }
    table.print(out);
    for (const QStringList& pair : supplies.shorts)
        out << '\n' << pair.join(" and ") << " are shorted in this package\n";
}

void printJson(TextOut& out, const DEV::ChipInfo& chip, const Supplies& supplies)
{
    QJsonArray array;
    for (const Supply& supply : supplies.supplies)
        array += QJsonObject {
            {"name",    supply.name                               },
            {"minimum", supply.minimum                            },
            {"maximum", supply.maximum                            },
            {"choices", QJsonArray::fromStringList(supply.choices)},
            {"default", supply.standard                           }
        };
    QJsonArray shorts;
    for (const QStringList& pair : supplies.shorts)
        shorts += QJsonArray::fromStringList(pair);
    const QJsonObject object {
        {"part",     chip.partNumber},
        {"device",   chip.name      },
        {"package",  chip.package   },
        {"variant",  chip.variant   },
        {"supplies", array          },
        {"shorts",   shorts         }
    };
    out.setResult(object);
}

int run(const Options& options, Io& io)
{
    const std::optional<DEV::ChipInfo> chip = findPart(options.part, io.err);
    if (!chip)
        return kUnusable;
    const OXA::Voltage voltage(chip->name, chip->partNumber);
    if (voltage.data.isEmpty()) {
        io.err.error("the voltage table has no row for " + chip->partNumber + " (" + chip->name
            + ", variant \"" + chip->variant + "\", " + chip->package + ")");
        return kUnusable;
    }
    const Supplies supplies = suppliesOf(voltage);
    if (options.json)
        printJson(io.out, *chip, supplies);
    else
        print(io.out, *chip, supplies);
    return supplies.shorts.isEmpty() ? kDone : kJobFailed;
}

}

void addVoltage(CLI::App& app, Io& io, int& status)
{
    Command command(app, "voltage", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    addPartOptions(command, options->part).required();
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
