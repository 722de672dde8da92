// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_RATIO_REPORTER_H
#define BENCH_RATIO_REPORTER_H

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// A row of the table: the rate of `ours`, compared with `base` in the same run.
struct RatioRow {
    std::string what, ours;
    std::string base; ///< empty: no comparison
    const char* unit; ///< of an item
};

/// Prints the rates of benchmarks as rows of the table in docs/benchmarks.md.
class RatioReporter : public benchmark::BenchmarkReporter {
public:
    explicit RatioReporter(std::vector<RatioRow> rows)
        : m_rows(std::move(rows))
    {
    }

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            const auto rate = run.counters.find("items_per_second");
            if (rate != run.counters.end())
                m_rates[run.benchmark_name()] = rate->second.value;
        }
    }

    void Finalize() override
    {
        for (const RatioRow& row : m_rows) {
            const double ours = m_rates[row.ours];
            std::printf("| %s | %.2f M %s/s |", row.what.c_str(), ours / 1e6, row.unit);
            if (row.base.empty())
                std::printf(" | |\n");
            else
                std::printf(" `%s`: %.2f M %s/s | %.2f |\n", row.base.c_str(),
                    m_rates[row.base] / 1e6, row.unit, ours / m_rates[row.base]);
        }
    }

private:
    std::vector<RatioRow> m_rows;
    std::map<std::string, double> m_rates;
};

#endif
