// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/design_rules.h"

#include "oxautils/check/rule.h"
#include "oxautils/config/configuration.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/model/shown_text.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kMostSearched = 20; // missing names whose nearest names are searched

enum RuleNumber : int { NotInDesign, WatchedMemory, DeclaredBits, IdleClock, OtherClock };

// In the order of RuleNumber.
const QList<RuleInfo>& ruleTable()
{
    static const QList<RuleInfo> table {
  // clang-format off
        {"not-in-design", Severity::Error,
            "A signal is not in the design, or does not have this bit.",
            "Correct its name; `oxa signals` lists those of the design."},
        {"watched-memory", Severity::Error,
            "A signal is a memory, which has no net.",
            "Name the signals at the memory's ports instead."},
        {"declared-bits", Severity::Warning,
            "A bus does not have all bits of its signal in the declared order.",
            "List every bit, the first of the declared range first; give a part of a signal its "
            "range as in cpu/pc[7:4]."},
        {"idle-clock", Severity::Warning,
            "A core's sample clock clocks no register.",
            "Use a clock of the design; `oxa signals` shows those of registers."},
        {"other-clock", Severity::Warning,
            "A register has another clock than its core.",
            "Watch it in a core with its clock; in this core, samples may mix old and new bits."},
  // clang-format on
    };
    return table;
}

/// The signal of all bits of a bus; -1 when they are of several.
int commonSignal(const QVector<DesignBit>& bits)
{
    const int first = bits.isEmpty() ? -1 : bits.first().signal;
    const bool same = std::all_of(
        bits.begin(), bits.end(), [first](const DesignBit& bit) { return bit.signal == first; });
    return same ? first : -1;
}

/// "cpu/pc" for "cpu/pc[3]".
QString withoutIndex(const QString& name)
{
    static const QRegularExpression index("\\[-?\\d+\\]$");
    return QString(name).remove(index);
}

/// Checks one core.
class DesignCheck {
public:
    DesignCheck(
        const DesignIndex& index, const AnyCore& core, int& searched, QList<Problem>& problems)
        : m_index(index)
        , m_design(index.design())
        , m_core(core)
        , m_searched(searched)
        , m_problems(problems)
    {
    }

    void run();

private:
    void checkClock();
    void checkItems(const QList<SignalItem>& items, const Place& place);
    DesignBit checkBit(const QString& name, const Place& place);
    bool checkBus(const SignalItem& bus, const QVector<DesignBit>& bits, const Place& place);
    void checkRegister(int signal, const Place& place);
    void addMissing(const QString& name, const Place& place);
    void add(RuleNumber number, const Place& place, const QString& text)
    {
        const RuleInfo& rule = ruleTable().at(number);
        m_problems.append({rule.name, rule.severity, place, text, rule.hint});
    }
    const DesignSignal& signalOf(int signal) const { return m_design.items.at(signal); }

    const DesignIndex& m_index;
    const Design& m_design;
    const AnyCore& m_core;
    int& m_searched; ///< missing names in all cores
    QList<Problem>& m_problems;
    int m_clock = -1; ///< position in the design's clocks; -1: none
    QSet<QString> m_missing; ///< reported once in each core
    QSet<int> m_told; ///< the same, by signal
};

void DesignCheck::run()
{
    checkClock();
    QList<SignalItem> captured;
    for (const SignalItem& item : m_core.items) {
        if (item.captureEnable)
            captured += item;
    }
    checkItems(captured, m_core.place());
    for (const TriggerPort* port : m_core.ports) {
        Place place = m_core.place();
        place.port = port->index;
        checkItems(port->signalList, place);
    }
}

void DesignCheck::checkClock()
{
    if (m_core.clock.isEmpty())
        return; // another rule reports it
    const DesignBit bit = checkBit(m_core.clock, m_core.place());
    if (bit.signal < 0 || m_design.isWaveform)
        return;
    m_clock = m_design.clockNets.value(signalOf(bit.signal).bitName(bit.position), -1);
    if (m_clock < 0)
        add(IdleClock, m_core.place(),
            QString("the design has no register with the sample clock \"%1\"")
                .arg(shownText(m_core.clock)));
}

void DesignCheck::checkItems(const QList<SignalItem>& items, const Place& place)
{
    bool areDeclared = true;
    for (const SignalItem& item : items) {
        QVector<DesignBit> bits;
        const QStringList names = flattenedNames({item});
        Place at = place;
        for (const QString& name : names) {
            at.signal = name;
            bits += checkBit(name, at);
        }
        at.signal = names.first();
        if (item.isBus() && !checkBus(item, bits, at))
            areDeclared = false;
        for (int i = 0; i < names.size(); ++i) {
            at.signal = names.at(i);
            if (bits.at(i).signal >= 0)
                checkRegister(bits.at(i).signal, at);
        }
    }
    const auto isRefuted = [&](const Problem& problem) {
        return problem.rule == "bus-order" && problem.place.core == place.core
            && problem.place.port == place.port;
    };
    if (areDeclared)
        m_problems.erase(
            std::remove_if(m_problems.begin(), m_problems.end(), isRefuted), m_problems.end());
}

/// The bit of that name; reports it when it cannot be watched.
DesignBit DesignCheck::checkBit(const QString& name, const Place& place)
{
    const DesignBit bit = m_index.bit(name);
    const int signal = bit.signal < 0 ? m_index.signal(withoutIndex(name)) : bit.signal;
    if (signal >= 0 && signalOf(signal).isMemory()) {
        if (!m_told.contains(signal))
            add(WatchedMemory, place, QString("\"%1\" is in a memory").arg(shownText(name)));
        m_told += signal;
        return {};
    }
    if (bit.signal < 0)
        addMissing(name, place);
    return bit;
}

void DesignCheck::addMissing(const QString& name, const Place& place)
{
    const QString key = withoutIndex(name);
    if (m_missing.contains(key))
        return;
    m_missing += key;
    const int whole = m_index.signal(name);
    const QString why = whole >= 0
        ? QString("is a bus of %1 bits, %2, but represents one bit")
              .arg(QString::number(signalOf(whole).width), signalOf(whole).rangeText())
        : m_index.whyMissing(name, m_searched++ < kMostSearched);
    add(NotInDesign, place, QString("\"%1\" %2").arg(shownText(name), why));
}

/// Compares the bits of a bus with the range in its name, or with the declared range. False when
/// they belong to several signals.
bool DesignCheck::checkBus(
    const SignalItem& bus, const QVector<DesignBit>& bits, const Place& place)
{
    static const QRegularExpression range("\\[(-?\\d{1,9}):(-?\\d{1,9})\\]$");
    const int number = commonSignal(bits);
    if (number < 0)
        return false;
    const DesignSignal& signal = signalOf(number);
    const auto named = range.match(bus.name);
    int high = signal.width - 1;
    int low = 0;
    if (named.hasMatch()) {
        high = signal.positionOf(named.captured(1).toInt());
        low = signal.positionOf(named.captured(2).toInt());
    } else if (m_index.signal(bus.name) != number) { // a name chosen by the user
        high = bits.first().position;
        low = bits.last().position;
    }
    bool matches = high >= low && bits.size() == high - low + 1;
    for (int i = 0; matches && i < bits.size(); ++i)
        matches = bits.at(i).position == high - i;
    if (!matches)
        add(DeclaredBits, place,
            QString("bus \"%1\" is \"%2\" to \"%3\" in %4 bits, declared is %5")
                .arg(shownText(bus.name), shownText(bus.subItems.first().name),
                    shownText(bus.subItems.last().name), QString::number(bits.size()),
                    shownText(signal.path) + signal.rangeText()));
    return true;
}

void DesignCheck::checkRegister(int number, const Place& place)
{
    const DesignSignal& signal = signalOf(number);
    if (m_clock < 0 || !signal.isRegister() || signal.clock == m_clock || m_told.contains(number))
        return;
    m_told += number;
    add(OtherClock, place,
        QString("the register \"%1\" has clock \"%2\", the core samples it with \"%3\"")
            .arg(shownText(signal.path), shownText(m_design.clocks.at(signal.clock)),
                shownText(m_design.clocks.at(m_clock))));
}

template <typename Core>
void addProblems(const QList<Core*>& cores, const DesignIndex& index, QList<Problem>& problems)
{
    int searched = 0;
    for (int position = 0; position < cores.size(); ++position) {
        const AnyCore core(cores, position);
        DesignCheck(index, core, searched, problems).run();
    }
}

}

void addDesignProblems(
    const QList<AoCore*>& cores, const DesignIndex& index, QList<Problem>& problems)
{
    addProblems(cores, index, problems);
    problems = inDocumentOrder(problems);
}

void addDesignProblems(
    const QList<AOCore_Lite*>& cores, const DesignIndex& index, QList<Problem>& problems)
{
    addProblems(cores, index, problems);
    problems = inDocumentOrder(problems);
}

void addDesignProblems(const QString& path, const DesignIndex& index, QList<Problem>& problems)
{
    const ParseOnce once;
    Configuration configuration;
    if (!readConfiguration(path, configuration, nullptr))
        return;
    addProblems(configuration.cores, index, problems);
    addProblems(configuration.liteCores, index, problems);
    const ConfigFile file(path);
    for (Problem& problem : problems) {
        if (problem.place.line == 0)
            file.locate(problem.place);
    }
    problems = inDocumentOrder(problems);
}

QList<RuleInfo> designRules() { return ruleTable(); }

}
