#include "fit.h"

using OXA_TOOL::AnalyzerAmounts;
using OXA_TOOL::AnalyzerResource;

namespace {

/// Says on `err` of which resource there is too little, by `tooMuch`; whether there is none.
template <typename TooMuch>
bool fits(const QString& what, const AnalyzerAmounts& taken, const DEV::ChipInfo& part,
    TooMuch tooMuch, TextOut& err)
{
    bool result = true;
    const AnalyzerAmounts available = OXA_TOOL::amountsOf(part);
    for (const AnalyzerResource& resource : OXA_TOOL::analyzerResources()) {
        if (!tooMuch(resource, taken, available))
            continue;
        err << "error: " << what << ' ' << taken.*resource.amount << ' ' << resource.units << ", "
            << part.partNumber << " has " << available.*resource.amount
            << "; capture, compare or count less, or use a larger part\n";
        result = false;
    }
    return result;
}

}

AnalyzerAmounts estimateOf(const OXA::Configuration& configuration, const DEV::ChipInfo& part)
{
    OXA_TOOL::AnalyzerEstimate estimate(part);
    for (const auto& core : configuration.cores)
        estimate.add(*core);
    for (const auto& core : configuration.liteCores)
        estimate.add(*core);
    return estimate.amounts();
}

bool mayFit(const OXA::Configuration& configuration, const DEV::ChipInfo& part, TextOut& err)
{
    const auto cannotFit
        = [](const AnalyzerResource& resource, const AnalyzerAmounts& taken,
              const AnalyzerAmounts& available) { return resource.cannotFit(taken, available); };
    return fits("the analyzer takes about", estimateOf(configuration, part), part, cannotFit, err);
}

bool netlistFits(const QMap<QString, int>& cells, const DEV::ChipInfo& part, TextOut& err)
{
    const AnalyzerAmounts taken {cells.value("QX_LUT4"),
        cells.value("QX_DFF") + cells.value("QX_DFFC") + cells.value("QX_DFFR"),
        cells.value("QX_BSRAM"), cells.value("QX_SSRAM")};
    const auto exceeds
        = [](const AnalyzerResource& resource, const AnalyzerAmounts& taken,
              const AnalyzerAmounts& available) { return resource.exceeds(taken, available); };
    return fits("the netlist takes", taken, part, exceeds, err);
}
