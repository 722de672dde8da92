// SPDX-License-Identifier: Apache-2.0
// Rows per second of logicTruthTable and of calcuate, which defines a row, for tables of 16 units;
// their ratio in the same run; registers per second of generateRegister.
#include "ratio_reporter.h"

#include "oxautils/encoding/match_registers.h"
#include "oxautils/encoding/trigger_expression.h"

#include <benchmark/benchmark.h>

#include <QTextStream>

#include <string>

namespace {

struct Shape {
    const char *name, *expression;
};

constexpr Shape kShapes[] = {
    {"one_named",   "M7"                                                               },
    {"all_named",   "M0&M1|M2^M3&M4|M5^M6&M7|M8^M9&M10|M11^M12&M13|M14^M15"            },
    {"negated",     "!M0&M1|!M2^M3&!M4|M5^M6&M7|M8^M9&M10|M11^M12&M13|M14^M15"         },
    {"parentheses", "(M0|(M1^(M2|(M3^(M4|(M5^M6))))))&(M7|M8)&(M9|M10|M11|M12|M13)"    },
    {"long",        "M0|M1|M2|M3|M4|M5|M6|M7|M8|M9|M10|M11|M12|M13|M14|M15|M0|M1|M2|M3"},
};

constexpr int kRows = 1 << 16;

// The inputs of calcuate for every row, prepared so that only its own time counts.
struct Rows {
    explicit Rows(QString expression)
        : bits(kRows)
    {
        std::vector<bool> added = enables;
        OXA::resetLogicExp(expression, added);
        const QByteArray infix = OXA::changeExpItem(expression).toLatin1();
        postfix = QByteArray(infix.size() + 1, '\0');
        OXA::translet(infix.constData(), postfix.data());
        operands = QByteArray(infix.size() + 1, '\0');
        OXA::getOperand(postfix.constData(), operands.data());
        OXA::sort(operands.data());
        for (int row = 0; row < kRows; ++row) {
            char text[33];
            OXA::itoa(row, text, 2);
            bits[size_t(row)] = QByteArray(text).rightJustified(16, '0');
            OXA::resetBitDataIn(bits[size_t(row)].data(), enables, added);
        }
    }

    std::vector<bool> enables = std::vector<bool>(16, true);
    QByteArray postfix, operands;
    std::vector<QByteArray> bits;
};

void rowByRow(benchmark::State& state, const char* expression)
{
    const Rows rows(expression);
    for (auto _ : state) {
        QString table;
        table.reserve(kRows);
        for (const QByteArray& bits : rows.bits)
            table += QLatin1Char(OXA::calcuate(rows.postfix, rows.operands, bits));
        benchmark::DoNotOptimize(table.data());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

void wholeTable(benchmark::State& state, const char* expression)
{
    const std::vector<bool> enables(16, true);
    for (auto _ : state)
        benchmark::DoNotOptimize(OXA::logicTruthTable(expression, enables));
    state.SetItemsProcessed(state.iterations() * kRows);
}

// A core with 16 units on ports of 32 signals: 4 registers for the capture, 5 a unit.
void registers(benchmark::State& state)
{
    OXA::AoCore core(0);
    OXA::SignalItem bus;
    for (int bit = 0; bit < 32; ++bit)
        bus.subItems += OXA::SignalItem();
    for (int i = 0; i < 16; ++i) {
        core.getTrigger(i)->signalList = {bus};
        core.matchUnit(i)->enabled = true;
        core.matchUnit(i)->trigger = core.getTrigger(i);
        core.matchUnit(i)->value0 = "10XRFBN010XRFBN010XRFBN010XRFBN0";
    }
    for (auto _ : state) {
        QString text;
        QTextStream out(&text);
        OXA::generateRegister(&core, out, "QX1N-9", 0);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations() * (4 + 16 * 5));
}

}

int main(int argc, char** argv)
{
    std::vector<RatioRow> rows;
    for (const Shape& shape : kShapes) {
        const std::string name = shape.name;
        benchmark::RegisterBenchmark(("calcuate/" + name).c_str(), rowByRow, shape.expression);
        benchmark::RegisterBenchmark(
            ("logicTruthTable/" + name).c_str(), wholeTable, shape.expression);
        rows.push_back({"truth table of 16 units, " + name, "logicTruthTable/" + name,
            "calcuate/" + name, "rows"});
    }
    rows.push_back({"registers of 16 units of 32 bits", "generateRegister", "", "registers"});
    benchmark::RegisterBenchmark("generateRegister", registers);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter(rows);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
