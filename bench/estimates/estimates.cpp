// SPDX-License-Identifier: Apache-2.0
// Measures the resources of analyzers, and compares them with the library's estimate.
//
//   bench_estimates measure SEED FROM TO
//       synthesizes the random configurations FROM to TO - 1 and prints a row for each: seed,
//       number, look-up tables, registers
//   bench_estimates fit <ROWS
//       prints oxautils/resource/logic_costs.h
//   bench_estimates compare <ROWS
//       prints the ratios of estimates to syntheses; exit status 1 when one exceeds the error
//       that the library states
#include "random_configuration.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/resource/analyzer_estimate.h"
#include "oxautils/resource/logic_costs.h"
#include "oxautils/resource/logic_counts.h"

#include <dev/device_db.h>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

using OXA_TOOL::kCommonItems;
using OXA_TOOL::kLogicItems;

namespace {

QTextStream out(stdout);

struct Row {
    unsigned seed;
    int number;
    int luts;
    int registers;
};

/// Synthesizes the configuration; the number of cells of each type, or empty after a failure.
QJsonObject synthesized(const QString& file, const Part& part, const QString& workDir)
{
    QProcess oxa;
    oxa.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    oxa.start(QCoreApplication::applicationDirPath() + "/../bin/oxa",
        {"generate", file, "--part", part.number, "--device", part.device, "--work-dir", workDir,
            "--force", "--json"});
    oxa.waitForFinished(-1);
    return QJsonDocument::fromJson(oxa.readAllStandardOutput()).object().value("cells").toObject();
}

int measure(unsigned seed, int from, int to)
{
    const QTemporaryDir dir;
    for (int i = from; i < to; ++i) {
        const QString path = dir.filePath("random.oxa");
        const Part part = writeRandomConfiguration(seed, i, path);
        const QJsonObject cells = synthesized(path, part, dir.filePath("work"));
        if (cells.isEmpty())
            return 1;
        out << seed << ' ' << i << ' ' << cells.value("QX_LUT4").toInt() << ' '
            << cells.value("QX_DFF").toInt() + cells.value("QX_DFFR").toInt()
                + cells.value("QX_DFFC").toInt()
            << '\n';
        out.flush();
    }
    return 0;
}

/// Calls `add` with each core of the row's configuration, and the part.
template <typename Add> void forEachCore(const Row& row, Add add)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("random.oxa");
    const Part part = writeRandomConfiguration(row.seed, row.number, path);
    const DEV::ChipInfo chip = DEV::DeviceDb::instance().find(part.number, part.device);
    const auto give = [&](const auto& cores) {
        for (const auto* core : cores)
            add(*core, chip);
        qDeleteAll(cores);
    };
    if (OXA::oxaModeFromOxaConfigFile(path) == OXA::OxaMode::Lite)
        give(OXA::readOXAConfigFromXml_Lite(path));
    else
        give(OXA::readOXAConfigFromXml(path));
}

OXA_TOOL::LogicCounts countsOf(const Row& row)
{
    OXA_TOOL::LogicCounts counts;
    forEachCore(row, [&counts](const auto& core, const DEV::ChipInfo& part) {
        OXA_TOOL::countCore(counts, core, part);
    });
    return counts;
}

OXA_TOOL::AnalyzerAmounts estimateOf(const Row& row)
{
    std::unique_ptr<OXA_TOOL::AnalyzerEstimate> estimate;
    forEachCore(row, [&estimate](const auto& core, const DEV::ChipInfo& part) {
        if (!estimate)
            estimate = std::make_unique<OXA_TOOL::AnalyzerEstimate>(part);
        estimate->add(core);
    });
    return estimate->amounts();
}

std::vector<Row> readRows()
{
    std::vector<Row> rows;
    QTextStream in(stdin);
    Row row;
    while (
        in >> row.seed >> row.number >> row.luts >> row.registers, in.status() == QTextStream::Ok)
        rows.push_back(row);
    return rows;
}

/// Non-negative coefficients for which the sums over `terms` are nearest to 1. Those of few terms
/// stay what they are in `known`: fitted, they would take up the errors of others.
std::vector<double> leastSquares(
    const std::vector<std::vector<double>>& terms, const std::vector<double>& known)
{
    constexpr int kRounds = 7000;
    constexpr int kFewTerms = 12;
    const size_t width = terms.front().size();
    std::vector<double> result(width, 0.0), residual(terms.size(), 1.0), square(width, 0.0);
    for (size_t i = 0; i < width; ++i) {
        int used = 0;
        for (const std::vector<double>& term : terms) {
            square[i] += term[i] * term[i];
            used += term[i] != 0;
        }
        if (used >= kFewTerms)
            continue;
        square[i] = 0;
        result[i] = known[i];
        for (size_t r = 0; r < terms.size(); ++r)
            residual[r] -= known[i] * terms[r][i];
    }
    for (int round = 0; round < kRounds; ++round) {
        for (size_t i = 0; i < width; ++i) {
            if (square[i] == 0)
                continue;
            double slope = 0;
            for (size_t r = 0; r < terms.size(); ++r)
                slope += terms[r][i] * residual[r];
            const double step = std::max(slope / square[i], -result[i]);
            result[i] += step;
            for (size_t r = 0; r < terms.size(); ++r)
                residual[r] -= step * terms[r][i];
        }
    }
    return result;
}

/// The first `items` of `counts`, as shares of `whole`.
std::vector<double> shares(const OXA_TOOL::LogicCounts& counts, int items, double whole)
{
    std::vector<double> result;
    result.reserve(size_t(items));
    for (int i = 0; i < items; ++i)
        result.push_back(counts.items[i] / whole);
    return result;
}

int fit()
{
    const std::vector<Row> rows = readRows();
    if (rows.empty())
        return 1;
    std::vector<std::vector<double>> luts, registers;
    for (const Row& row : rows) {
        const OXA_TOOL::LogicCounts counts = countsOf(row);
        luts.push_back(shares(counts, kLogicItems, row.luts));
        registers.push_back(shares(counts, kCommonItems, double(row.registers - counts.registers)));
    }
    out << "// SPDX-License-Identifier: Apache-2.0\n"
           "// Made by bench/estimates/refit.sh, from "
        << rows.size()
        << " syntheses of random configurations.\n"
           "#ifndef OXAUTILS_RESOURCE_LOGIC_COSTS_H\n"
           "#define OXAUTILS_RESOURCE_LOGIC_COSTS_H\n\n"
           "#include \"oxautils/resource/logic_counts.h\"\n\n"
           "namespace OXA_TOOL {\n\n"
           "/// Look-up tables of each item.\n"
           "constexpr double kLutCosts[kLogicItems] = {\n";
    const std::vector<double> costs
        = leastSquares(luts, {std::begin(OXA_TOOL::kLutCosts), std::end(OXA_TOOL::kLutCosts)});
    for (int item = 0; item < kLogicItems; ++item)
        out << "    " << QString::number(costs[size_t(item)], 'f', 2) << ", // "
            << OXA_TOOL::kLogicItemTexts[item] << '\n';
    out << "};\n\n"
           "/// Registers of the first items, beside those that are counted one by one.\n"
           "constexpr int kCommonRegisters[kCommonItems] = {";
    const std::vector<double> common = leastSquares(
        registers, {std::begin(OXA_TOOL::kCommonRegisters), std::end(OXA_TOOL::kCommonRegisters)});
    for (int item = 0; item < kCommonItems; ++item)
        out << (item ? ", " : "") << std::lround(common[size_t(item)]);
    out << "};\n\n}\n\n#endif\n";
    return 0;
}

/// Prints the minimum, the median and the maximum of `ratios`; whether all are within `percent`.
bool printRatios(const char* what, std::vector<double> ratios, int percent)
{
    std::sort(ratios.begin(), ratios.end());
    out << QString("%1: least %2, median %3, largest %4\n")
               .arg(QString(what), QString::number(ratios.front(), 'f', 3),
                   QString::number(ratios[ratios.size() / 2], 'f', 3),
                   QString::number(ratios.back(), 'f', 3));
    return ratios.front() >= 1 - percent / 100.0 && ratios.back() <= 1 + percent / 100.0;
}

int compare()
{
    const std::vector<Row> rows = readRows();
    if (rows.empty())
        return 1;
    std::vector<double> luts, registers;
    for (const Row& row : rows) {
        const OXA_TOOL::AnalyzerAmounts estimate = estimateOf(row);
        luts.push_back(double(estimate.luts) / row.luts);
        registers.push_back(double(estimate.registers) / row.registers);
    }
    const auto byLuts = [](const Row& a, const Row& b) { return a.luts < b.luts; };
    const auto ends = std::minmax_element(rows.begin(), rows.end(), byLuts);
    out << "estimate / synthesis of " << rows.size() << " random configurations, "
        << ends.first->luts << " to " << ends.second->luts << " look-up tables\n";
    const QList<OXA_TOOL::AnalyzerResource>& resources = OXA_TOOL::analyzerResources();
    bool holds = printRatios(resources[0].name, luts, resources[0].low);
    holds &= printRatios(resources[1].name, registers, resources[1].low);
    return holds ? 0 : 1;
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QStringList args = application.arguments();
    if (args.value(1) == "measure" && args.size() == 5)
        return measure(args.at(2).toUInt(), args.at(3).toInt(), args.at(4).toInt());
    if (args.value(1) == "fit")
        return fit();
    if (args.value(1) == "compare")
        return compare();
    QTextStream(stderr)
        << "usage: bench_estimates measure SEED FROM TO | fit <ROWS | compare <ROWS\n";
    return 2;
}
