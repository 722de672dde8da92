// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "core_words.h"
#include "part.h"
#include "request.h"
#include "table.h"

#include "oxautils/resource/analyzer_estimate.h"
#include "oxautils/resource/capture_memory.h"

#include <QJsonArray>

#include <algorithm>

#include <unistd.h>

namespace {

using OXA_TOOL::AnalyzerAmounts;
using OXA_TOOL::AnalyzerResource;
using OXA_TOOL::MemoryAmounts;

constexpr char kSummary[] = "Estimate the resources that an analyzer needs";

constexpr char kHelp[]
    = R"(Prints, for each core, the memory blocks that it needs and, in parentheses, those
that it would need in the other kinds of memory; then the totals, compared with what
the part has. A block SRAM has 18 kbit, or 9 kbit on some devices; a shadow SRAM has
64 bits. Standard cores store one bit more with each sample, the mark.

Look-up tables and registers are estimates: synthesis results differ by up to 15 and 5
percent. "may not fit" means that the estimate is below the limit by less than that.

Exit status 1: the analyzer does not fit.)";

constexpr Table::Column kColumns[] = {
    {"CORE",     Table::Left },
    {"RESOURCE", Table::Left },
    {"TAKES",    Table::Right},
    {"HAS",      Table::Right},
    {"SHARE",    Table::Right},
    {"",         Table::Left },
};

constexpr int kKinds = 3;
constexpr int kBarLength = 25;

struct Options {
    QString file;
    PartOptions part;
    bool json = false;
};

/// The memory of one core.
struct Memory {
    int position;
    int index;
    int width; // data bits
    int depth; // samples
    bool mark; // stores one bit more with each sample
    int kind; // the kind that the core uses
    MemoryAmounts takes; // amount for each kind
};

struct Estimate {
    QList<Memory> memories;
    MemoryAmounts memoryAvailable;
    AnalyzerAmounts total;
    AnalyzerAmounts available;

    bool fits() const
    {
        const QList<AnalyzerResource>& resources = OXA_TOOL::analyzerResources();
        return std::none_of(
            resources.begin(), resources.end(), [this](const AnalyzerResource& resource) {
                return resource.exceeds(total, available);
            });
    }
};

void add(Estimate& estimate, Memory memory, int askedKind, const DEV::ChipInfo& chip)
{
    memory.kind = OXA_TOOL::builtKind(askedKind, chip.partNumber, chip.name);
    memory.takes = OXA_TOOL::captureMemory(memory.width, memory.depth, memory.mark, chip.name);
    estimate.memories += memory;
}

Estimate countAll(const OXA::Configuration& configuration, const DEV::ChipInfo& chip)
{
    Estimate estimate;
    estimate.memoryAvailable = OXA_TOOL::deviceMemory(chip.partNumber, chip.name);
    estimate.available = OXA_TOOL::amountsOf(chip);
    estimate.total = OXA_TOOL::estimateOf(configuration, chip);
    for (int i = 0; i < configuration.cores.size(); ++i) {
        const OXA::AoCore& core = *configuration.cores.at(i);
        add(estimate, {i, core.index, OXA_TOOL::storedBits(core), core.storageDepth, true, 0, {}},
            core.implementation, chip);
    }
    if (!configuration.liteCores.isEmpty()) { // only the first is built
        const OXA::AOCore_Lite& core = *configuration.liteCores.first();
        add(estimate,
            {0, core.index, int(core.dataSignals().size()), core.captureAmount, false, 0, {}},
            core.implementation, chip);
    }
    return estimate;
}

QString shareText(qint64 taken, qint64 available)
{
    return available > 0 ? QString("%1 %").arg((taken * 100 + available - 1) / available) : "-";
}

/// A bar in proportion to the share; on a terminal only.
QString barText(qint64 taken, qint64 available)
{
    static const bool terminal = isatty(STDOUT_FILENO);
    if (!terminal || available <= 0)
        return {};
    const int length
        = int(qMin<qint64>(kBarLength, (taken * kBarLength + available - 1) / available));
    return QString(length, '#').leftJustified(kBarLength, '.');
}

void addRow(Table& table, const QString& core, const QString& kind, qint64 taken, qint64 available,
    const QString& note)
{
    const QString bar = barText(taken, available);
    table.addRow({core, kind, QString::number(taken), QString::number(available),
        shareText(taken, available), bar + (bar.isEmpty() || note.isEmpty() ? "" : " ") + note});
}

QString noteText(const AnalyzerResource& resource, const Estimate& estimate)
{
    if (resource.exceeds(estimate.total, estimate.available))
        return "does not fit";
    return resource.isNear(estimate.total, estimate.available) ? "may not fit" : "";
}

void print(TextOut& out, const QString& file, const DEV::ChipInfo& chip, const Estimate& estimate)
{
    out << file << " on " << chip.partNumber << " (" << chip.name << ")\n\n";
    Table table(kColumns);
    for (const Memory& memory : estimate.memories) {
        QString core = QString("%1: %2 bits x %3")
                           .arg(QString::number(memory.position),
                               QString::number(memory.width + int(memory.mark)),
                               QString::number(memory.depth));
        for (int kind = 0; kind < kKinds; ++kind) {
            const bool built = kind == memory.kind;
            const qint64 takes = memory.takes.of(kind);
            const qint64 has = estimate.memoryAvailable.of(kind);
            addRow(table, core,
                built ? kMemoryWords[kind] : QString("(%1)").arg(kMemoryWords[kind]), takes, has,
                takes > has ? "does not fit" : "");
            core.clear();
        }
    }
    QString what = "analyzer";
    for (const AnalyzerResource& resource : OXA_TOOL::analyzerResources()) {
        addRow(table, what, resource.name, estimate.total.*resource.amount,
            estimate.available.*resource.amount, noteText(resource, estimate));
        what.clear();
    }
    table.print(out);
}

QJsonObject amountsJson(const MemoryAmounts& amounts)
{
    return {
        {"blockSram",  amounts.blockSram },
        {"registers",  amounts.registers },
        {"shadowSram", amounts.shadowSram}
    };
}

QJsonObject amountsJson(const AnalyzerAmounts& amounts)
{
    QJsonObject object;
    for (const AnalyzerResource& resource : OXA_TOOL::analyzerResources())
        object.insert(resource.key, amounts.*resource.amount);
    return object;
}

void printJson(
    TextOut& out, const QString& file, const DEV::ChipInfo& chip, const Estimate& estimate)
{
    QJsonArray cores;
    for (const Memory& memory : estimate.memories) {
        const bool known = memory.kind >= 0 && memory.kind < kKinds;
        cores += QJsonObject {
            {"position",     memory.position                                             },
            {"index",        memory.index                                                },
            {"storageWidth", memory.width + int(memory.mark)                             },
            {"storageDepth", memory.depth                                                },
            {"storage",      known ? QJsonValue(kMemoryWords[memory.kind]) : QJsonValue()},
            {"takes",        amountsJson(memory.takes)                                   }
        };
    }
    const QJsonObject object {
        {"file",      file                           },
        {"part",      chip.partNumber                },
        {"device",    chip.name                      },
        {"cores",     cores                          },
        {"total",     amountsJson(estimate.total)    },
        {"available", amountsJson(estimate.available)},
        {"fits",      estimate.fits()                }
    };
    out.setResult(object);
}

int run(const Options& options, Io& io)
{
    OXA::Configuration configuration;
    if (!readConfiguration(options.file, configuration, io.err))
        return kUnusable;
    const std::optional<DEV::ChipInfo> chip = findPart(options.part, io.err);
    if (!chip)
        return kUnusable;
    const Estimate estimate = countAll(configuration, *chip);
    if (options.json)
        printJson(io.out, options.file, *chip, estimate);
    else
        print(io.out, options.file, *chip, estimate);
    return estimate.fits() ? kDone : kJobFailed;
}

}

void addEstimate(CLI::App& app, Io& io, int& status)
{
    Command command(app, "estimate", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.configuration(options->file);
    addPartOptions(command, options->part).required();
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
