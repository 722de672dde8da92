// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_SUBJECTS_H
#define OXAUTILS_CHECK_SUBJECTS_H

#include "oxautils/check/problem.h"
#include "oxautils/encoding/static_expression.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"
#include "oxautils/model/limits.h"
#include "oxautils/resource/analyzer_estimate.h"

#include <dev/device_db.h>

namespace OXA {

// The subjects of rules. They exist as long as a check.

/// A core of either mode: what both modes have.
struct AnyCore {
    AnyCore(const QList<AoCore*>& cores, int position);
    AnyCore(const QList<AOCore_Lite*>& cores, int position);

    Place place() const { return {position}; }
    Place eventsPlace() const;

    int position = 0; ///< in its list
    bool lite = false;
    int index = 0;
    QString clock;
    int trigType = 0;
    int implementation = 0;
    int depth = 0; ///< samples that fit into its memory
    CoreEvents events; ///< default in a Lite core
    QList<int> forcing; ///< positions of the cores that force it, ascending; none of too many cores
    bool hasExpressions = false; ///< that can trigger it
    int tableMemory = -1; ///< kind of its expression tables' memory; -1 without tables
    QList<SignalItem> items; ///< data signals, captured or not
    QStringList data; ///< captured signals, bit by bit
    QStringList labels; ///< other texts that are shown: the module, buses, texts of signals
    QList<const TriggerPort*> ports; ///< those with signals

private:
    AnyCore(const AoCore& core, int position);
    AnyCore(const AOCore_Lite& core, int position);
};

/// All cores of a configuration, and the part that they are built for.
struct AllCores {
    QList<AnyCore> cores;
    const DEV::ChipInfo* part = nullptr; ///< null when there is none
    QList<OXA_TOOL::AnalyzerAmounts> amounts; ///< of the cores up to each; empty without a part
};

struct StandardCore {
    Place place() const { return {position}; }
    Place storagePlace() const;

    const AoCore& core;
    int position;
    QString device; ///< name of the device it is built for; empty when there is none
    int depthFlag; ///< as `dataDepth` takes it
};

/// An enabled match unit.
struct Unit {
    Place place() const;

    /// The bound port has signals.
    bool watches() const { return unit.trigger && !unit.trigger->signalList.isEmpty(); }

    const MatchUnit& unit;
    int position; ///< of its core
};

/// A trigger expression, or the one by which samples are stored, parsed.
struct Expression {
    Expression(const AoCore& core, int corePosition, int number);
    Expression(const AoCore& core, int corePosition); ///< the one of the core's storage

    Place place() const;
    bool dynamic() const { return core.expressionType == DynamicExpressions; }

    const AoCore& core;
    int position; ///< of its core
    int number; ///< in its core's list; -1: of the core's storage
    QString text;
    QList<Token> tokens;
    StaticExpression parsed; ///< as Verilog reads it
    TruthTable compiled; ///< of a dynamic one

private:
    Expression(const AoCore& core, int corePosition, int number, const QString& text);
};

}

#endif
