#include "oxautils/check/rule.h"

#include "oxautils/check/core_rules.h"
#include "oxautils/check/expression_rules.h"
#include "oxautils/check/file_rules.h"
#include "oxautils/check/part_rules.h"
#include "oxautils/check/standard_rules.h"
#include "oxautils/check/unit_rules.h"

namespace OXA {

namespace {

constexpr Severity kError = Severity::Error;
constexpr Severity kWarning = Severity::Warning;

}

const std::vector<Rule>& rules()
{
    static const std::vector<Rule> table {
  // clang-format off

        // What any file can break; cores are read only from one that keeps these four.
        {"unreadable", kError, findUnreadable,
            "The file cannot be read.",
            "Check the path and the permissions."},
        {"malformed", kError, findMalformed,
            "The file is no well-formed XML, or nothing that a configuration can be.",
            "Repair the place by hand, or go back to the last good copy."},
        {"version", kError, findVersion,
            "The file has no version, one that is no version, or a newer one than is known.",
            "Set <Version> to 3.0, or use a newer release."},
        {"mode", kError, findMode,
            "The file's mode is neither Standard nor Lite.",
            "Write <Mode> as Standard or Lite, in these letters."},

        // What stands in a file, but not in the cores read from it.
        {"unread-element", kWarning, findUnreadElements,
            "An element stands where no reader looks for it, or for the second time.",
            "Correct its name or its place, or remove it."},
        {"missing-attribute", kError, findMissingAttributes,
            "An attribute that the format requires is missing.",
            "Add it, or save the file anew; a missing number reads as 0."},
        {"not-a-number", kError, findBadNumbers,
            "An attribute that holds a whole number holds something else.",
            "Write a decimal number."},
        {"not-a-word", kWarning, findBadWords,
            "An attribute that takes one of two words holds another, and reads as the second.",
            "Write one of the two words, in these letters."},
        {"port-number", kError, findPortNumbers,
            "A trigger port's index is not 0 to 15, so the port is skipped.",
            "Give it a free index from 0 to 15."},
        {"port-twice", kError, findRepeatedPorts,
            "Two trigger ports of a core have the same index, so their signals become one port.",
            "Give one of them a free index."},
        {"unit-number", kError, findUnitNumbers,
            "A match unit's index is not 0 to 15, so the unit is skipped.",
            "Give it a free index from 0 to 15."},
        {"unit-twice", kError, findRepeatedUnits,
            "Two match units of a core have the same index, so only the later one counts.",
            "Give one of them a free index, or remove it."},
        {"unknown-port", kError, findUnknownPorts,
            "A match unit is bound to a port that does not exist, and so to none.",
            "Bind it to a port from 0 to 15."},
        {"empty-bus", kWarning, findEmptyBuses,
            "A bus has no bits, so it counts as one signal of its name.",
            "List its bits, or make it a <Signal>."},
        {"checksum", kError, findChecksum,
            "The checksum is missing or does not match what the file holds.",
            "Save the file anew if the change was meant; otherwise go back to a good copy."},

        // Cores together.
        {"no-cores", kWarning, findNoCores,
            "The configuration has no core.",
            "Add a core."},
        {"too-many-cores", kError, findTooManyCores,
            "The configuration has more cores than there are sources for.",
            "Put signals of one clock into one core."},
        {"unbuilt-core", kWarning, findUnbuiltCores,
            "A Lite configuration has more than one core, but only the first is built.",
            "Use a Standard configuration, or files of their own."},
        {"shared-data", kWarning, findSharedSignals,
            "Two cores under different clocks sample the same signal.",
            "Sample it where its own clock is; in the other core its samples may be torn."},

        // Cores on a part.
        {"no-shadow-sram", kWarning, findMissingShadowSram,
            "A core asks for shadow SRAM on a device that has none, and gets block SRAM.",
            "Choose block SRAM, so that the configuration says what is built."},
        {"block-sram", kError, findBlockSramFit,
            "The cores' memories take more block SRAM than the part has.",
            "Capture fewer signals or samples, or use a larger part; `oxa estimate` counts."},
        {"shadow-sram", kError, findShadowSramFit,
            "The cores' memories take more shadow SRAM than the part has.",
            "Capture less, or move a core to block SRAM; `oxa estimate` counts."},
        {"registers", kError, findRegisterFit,
            "The cores' memories take more registers than the part has.",
            "Capture less, or move a core to block SRAM; `oxa estimate` counts."},

        // One core of either mode.
        {"core-index", kError, findCoreIndex,
            "A core's index is not its position in the file.",
            "Number the cores from 0 in the order of the file."},
        {"no-clock", kError, findNoClock,
            "A core has no sample clock.",
            "Name the signal whose edges take samples."},
        {"sampling-edge", kError, findSamplingEdge,
            "A core's sampling edge is neither rising nor falling.",
            "Set \"trig_type\" to 0 or 1."},
        {"memory-kind", kError, findMemoryKind,
            "A core's capture memory is of a kind that does not exist for it.",
            "Use 0 (block SRAM), 2 (shadow SRAM) or, in Standard cores, 1 (registers)."},
        {"no-data", kError, findNoData,
            "A core captures no signal.",
            "Add a data signal, or switch \"capture_enable\" on for one."},
        {"signal-twice", kWarning, findRepeatedSignals,
            "A signal is captured more than once, or stands twice in a trigger port.",
            "Remove all but one; each costs a bit of every sample."},
        {"sampled-clock", kWarning, findSampledClock,
            "A core captures its own sample clock.",
            "Remove it from the data signals."},
        {"unusable-name", kError, findUnusableNames,
            "A signal's name does not become one identifier in Verilog.",
            "Use the name that the signal has in the netlist."},
        {"hidden-characters", kWarning, findHiddenCharacters,
            "A name holds control or format characters: it looks like another, or out of order.",
            "Remove them, or type the name anew."},
        {"wrapper-name", kError, findWrapperNames,
            "A signal has a name that the generated wrapper uses itself.",
            "Rename the signal in the design."},
        {"lite-amount", kError, findLiteAmount,
            "A Lite core captures no sample.",
            "Set \"capture_amount\" to 1 or more."},

        // Amounts of a Standard core.
        {"storage-depth", kError, findStorageDepth,
            "A core's storage depth is no power of two.",
            "Use 16, 32, ... 65536: the generated names hold its logarithm."},
        {"window-count", kError, findWindowCount,
            "A core's number of windows is no power of two.",
            "Use 1, 2, 4 and so on."},
        {"capture-amount", kError, findCaptureAmount,
            "A core's windows are empty, or do not fit into its memory.",
            "Keep \"capture_amount\" at or below \"storage_depth\" / \"window_num\"."},
        {"trigger-position", kError, findTriggerPosition,
            "A core's trigger position is outside its window.",
            "Keep \"trigger_pos\" from 0 to \"capture_amount\" - 1."},
        {"short-window", kError, findShortWindow,
            "So few samples follow a core's trigger that its data depth register is negative.",
            "Capture more samples, or move the trigger to the front: three samples have to follow "
            "it, four with dynamic expressions, and one more on some devices."},
        {"narrow-registers", kError, findNarrowRegisters,
            "A core's registers, as wide as its data register, do not hold its amounts.",
            "Capture less, or widen a sample or a port: their width is the registers'."},

        // A match unit that is switched on.
        {"unit-unbound", kError, findUnboundUnit,
            "A match unit is switched on, but bound to no trigger port.",
            "Bind it to a port with signals, or switch it off."},
        {"unit-on-empty-port", kError, findEmptyPort,
            "A match unit is switched on, but its trigger port has no signals.",
            "Add signals to the port, or switch the unit off."},
        {"match-type", kError, findMatchType,
            "A match unit's type does not exist.",
            "Use 0 to 5."},
        {"function", kError, findFunction,
            "A match unit compares with a function that its type does not have.",
            "Choose another function, or a type that has it."},
        {"value-too-long", kError, findLongValue,
            "A match unit's value has more characters than its port has signals.",
            "Write one character a signal, the most significant first."},
        {"value-too-short", kWarning, findShortValue,
            "A match unit's value has fewer characters than its port has signals.",
            "Write one character a signal; X for those that do not matter."},
        {"value-character", kError, findValueCharacters,
            "A match unit's value holds characters that its type and function do not know.",
            "Levels are 0, 1 and X, with == and != only; edges R, F, B, N take a type with edges."},
        {"range-order", kError, findRangeOrder,
            "A match unit's range ends below its beginning.",
            "Swap the bounds."},
        {"counter-width", kError, findCounterWidth,
            "A match unit's counter has a width that counters do not have.",
            "Use 1 to 32 bits."},
        {"counter", kError, findCounter,
            "A match unit's counter counts to 0, or further than its width allows.",
            "Count to 1 at least and 2 to the power of the width at most."},
        {"idle-continuous", kWarning, findIdleContinuous,
            "A match unit asks for gapless matches, but counts none.",
            "Switch the counter on, or the continuous mode off."},
        {"unused-unit", kWarning, findUnusedUnit,
            "A match unit is switched on, but no expression names it.",
            "Name it in an expression, or switch it off: it costs logic."},

        // Trigger expressions.
        {"no-expression", kWarning, findNoExpression,
            "A core has no trigger expression, so it triggers only by force.",
            "Add an expression."},
        {"too-many-expressions", kError, findTooManyExpressions,
            "A core has more than 16 trigger expressions.",
            "Join some of them: one expression may name every unit."},
        {"table-memory", kError, findTableMemory,
            "A core's expression tables are in a memory that does not exist.",
            "Set \"ex_implementation\" to 0 (block SRAM), 1 (registers) or 2 (shadow SRAM)."},
        {"expression-character", kError, findForeignCharacters,
            "An expression holds something that is no part of expressions.",
            "Use M0 to M15, !, &, ^, | and parentheses; static ones may have ~, &&, || and 1'b0 or "
            "1'b1 too."},
        {"expression-blank", kWarning, findBlanks,
            "A dynamic expression holds blanks, which the table's compiler never expected.",
            "Remove the blanks."},
        {"unknown-unit", kError, findUnknownUnits,
            "An expression names a match unit that does not exist.",
            "Use M0 to M15."},
        {"disabled-unit", kError, findDisabledUnits,
            "An expression names a match unit that is switched off.",
            "Switch the unit on, or take it out of the expression."},
        {"parentheses", kError, findParentheses,
            "An expression's parentheses do not pair up.",
            "Add the missing one."},
        {"expression-syntax", kError, findSyntax,
            "An expression has operators and operands that do not fit together, or nothing.",
            "Write it as M0&(M1|!M2); a table's compiler takes !(!M0), not !!M0."},
        {"expression-too-long", kError, findLongExpression,
            "A dynamic expression is longer than the table's compiler evaluates.",
            "Shorten it, or switch units off that it does not name: they are appended to it."},
        {"hidden-unit", kError, findHiddenUnits,
            "A dynamic expression hides a unit that is switched on: M10 to M15 hide M1.",
            "Name M1 too, as in M10|(M1&!M1), or switch it off."},

  // clang-format on
    };
    return table;
}

}
