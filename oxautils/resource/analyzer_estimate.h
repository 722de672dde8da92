// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_RESOURCE_ANALYZER_ESTIMATE_H
#define OXAUTILS_RESOURCE_ANALYZER_ESTIMATE_H

#include "oxautils/oxautils_export.h"

#include <QList>

#include <memory>

namespace DEV {
struct ChipInfo;
}

namespace OXA {
class AoCore;
class AOCore_Lite;
struct Configuration;
}

namespace OXA_TOOL {

/// Amounts of what a device has.
struct OXAUTILS_EXPORT AnalyzerAmounts {
    qint64 luts = 0; ///< look-up tables of four inputs
    qint64 registers = 0; ///< flip-flops
    qint64 blockSram = 0; ///< blocks
    qint64 shadowSram = 0; ///< blocks of 64 bits
};

/// The resources that a whole analyzer needs, with its control core and wrapper, before it is
/// built: look-up tables, registers, and the memories for samples and expression tables
/// (docs/estimates.md).
class OXAUTILS_EXPORT AnalyzerEstimate {
public:
    /// An empty record is a part with blocks of 18 kbit and with shadow SRAM.
    explicit AnalyzerEstimate(const DEV::ChipInfo& part);
    ~AnalyzerEstimate();

    /// Adds a core. Of Lite cores only the first is built.
    void add(const OXA::AoCore& core);
    void add(const OXA::AOCore_Lite& core); ///< others than the first add nothing

    /// Of the cores so far.
    AnalyzerAmounts amounts() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// The resources that the analyzer of `configuration` needs on the part.
OXAUTILS_EXPORT AnalyzerAmounts estimateOf(
    const OXA::Configuration& configuration, const DEV::ChipInfo& part);

/// What the part has; 0 for look-up tables or registers that the catalogue does not contain.
OXAUTILS_EXPORT AnalyzerAmounts amountsOf(const DEV::ChipInfo& part);

/// One of the amounts.
struct OXAUTILS_EXPORT AnalyzerResource {
    const char* name; ///< "block SRAM"
    const char* units; ///< "block SRAMs"
    const char* key; ///< of JSON: "blockSram"
    qint64 AnalyzerAmounts::*amount; ///< its field
    int low; ///< percent by which synthesis may take more than is estimated
    int high; ///< percent by which the estimate may be above what synthesis takes

    /// The estimate is above what the part has.
    bool exceeds(const AnalyzerAmounts& estimate, const AnalyzerAmounts& available) const;
    /// It is so far above that the analyzer cannot fit.
    bool cannotFit(const AnalyzerAmounts& estimate, const AnalyzerAmounts& available) const;
    /// It is not above, but synthesis may be.
    bool isNear(const AnalyzerAmounts& estimate, const AnalyzerAmounts& available) const;
};

/// All of them.
OXAUTILS_EXPORT const QList<AnalyzerResource>& analyzerResources();

}

#endif
