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

// What rules look at. Subjects live as long as a check.

/// A core of either mode, by what both have.
struct AnyCore {
    AnyCore(const AoCore& core, int position);
    AnyCore(const AOCore_Lite& core, int position);

    Place place() const { return {position}; }

    int position = 0; ///< in its list
    bool lite = false;
    int index = 0;
    QString clock;
    int trigType = 0;
    int implementation = 0;
    int depth = 0; ///< samples that its memory holds
    int tableMemory = -1; ///< kind of its expression tables' memory; -1 without tables
    QList<SignalItem> items; ///< data signals, captured or not
    QStringList data; ///< captured signals, bit by bit
    QStringList labels; ///< what is shown beside these: the module, buses, other texts of signals
    QList<const TriggerPort*> ports; ///< those with signals
};

/// All cores of a configuration, and the part that they are meant for.
struct AllCores {
    QList<AnyCore> cores;
    const DEV::ChipInfo* part = nullptr; ///< null when there is none
    QList<OXA_TOOL::AnalyzerAmounts> amounts; ///< of the cores up to each; empty without a part
};

struct StandardCore {
    Place place() const { return {position}; }

    const AoCore& core;
    int position;
    QString device; ///< name of the device it is meant for; empty when there is none
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

/// A trigger expression, taken apart.
struct Expression {
    Expression(const AoCore& core, int corePosition, int number);

    Place place() const;
    bool dynamic() const { return core.expressionType == DynamicExpressions; }

    const AoCore& core;
    int position; ///< of its core
    int number; ///< in its core's list
    QString text;
    QList<Token> tokens;
    StaticExpression parsed; ///< what Verilog would make of it
    TruthTable compiled; ///< of a dynamic one
};

}

#endif
