// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/choose_signals.h"

#include "oxautils/model/shown_text.h"

#include <QRegularExpression>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kMostNames = 3; // in a warning

/// A range of bits in a word, by their indexes.
struct Range {
    bool given = false;
    int first = 0;
    int last = 0;
};

/// Removes "[7:4]" or "[3]" from the end of `word`; false when there is none.
bool splitRange(QString& word, Range& range)
{
    static const QRegularExpression form("^(.+)\\[(-?\\d{1,9})(?::(-?\\d{1,9}))?\\]$",
        QRegularExpression::DotMatchesEverythingOption);
    const auto match = form.match(word);
    if (!match.hasMatch())
        return false;
    range.given = true;
    range.first = match.captured(2).toInt();
    range.last = match.captured(3).isEmpty() ? range.first : match.captured(3).toInt();
    word = match.captured(1);
    return true;
}

class Chooser {
public:
    Chooser(const DesignIndex& index, const QString& clock)
        : m_index(index)
        , m_design(index.design())
        , m_clock(clockOf(clock))
    {
    }

    void take(const QString& word);
    ChosenSignals finish();

private:
    int clockOf(const QString& name) const;
    QVector<int> meant(const QString& word) const;
    bool leavesOut(const DesignSignal& signal);
    void takeBits(const QString& word, int signal, const Range& range);
    void takePositions(int signal, int high, int low);
    void fail(const QString& word, const QString& why)
    {
        m_chosen.errors += QString("\"%1\" %2").arg(shownText(word), why);
    }

    const DesignIndex& m_index;
    const Design& m_design;
    int m_clock; ///< position in the design's clocks; -1 for none
    QHash<int, QVector<bool>> m_taken; ///< by signal and position
    QStringList m_memories; ///< left out
    QStringList m_clocks; ///< left out
    ChosenSignals m_chosen;
};

int Chooser::clockOf(const QString& name) const
{
    const DesignBit bit = m_index.bit(name);
    return bit.signal < 0
        ? -1
        : m_design.clockNets.value(m_design.items.at(bit.signal).bitName(bit.position), -1);
}

/// The signal of that name, or the matches of a pattern.
QVector<int> Chooser::meant(const QString& word) const
{
    const int named = m_index.signal(word);
    if (named >= 0)
        return {named};
    return word.contains('*') || word.contains('?') ? m_index.matching(word) : QVector<int>();
}

void Chooser::take(const QString& word)
{
    QString name = word;
    Range range;
    QVector<int> found = meant(word);
    if (found.isEmpty() && splitRange(name, range))
        found = meant(name);
    if (found.isEmpty())
        return fail(word, m_index.whyMissing(name));
    const bool isPattern = m_index.signal(name) < 0;
    bool any = false;
    for (const int i : qAsConst(found)) {
        if (isPattern && leavesOut(m_design.items.at(i)))
            continue;
        takeBits(word, i, range);
        any = true;
    }
    if (!any)
        fail(word, "matches nothing that can be watched");
}

/// Whether a pattern leaves out `signal`.
bool Chooser::leavesOut(const DesignSignal& signal)
{
    const bool isClock = m_clock >= 0 && !signal.isVector()
        && m_design.clockNets.value(signal.path, -1) == m_clock;
    if (signal.isMemory())
        m_memories += signal.path;
    else if (isClock)
        m_clocks += signal.path;
    return isClock || signal.isMemory();
}

void Chooser::takeBits(const QString& word, int signal, const Range& range)
{
    const DesignSignal& found = m_design.items.at(signal);
    if (found.isMemory())
        return fail(word, "is a memory, which cannot be watched; watch the signals at its ports");
    if (!range.given)
        return takePositions(signal, found.width - 1, 0);
    const int a = found.positionOf(range.first);
    const int b = found.positionOf(range.last);
    if (std::min(a, b) >= 0 && std::max(a, b) < found.width)
        return takePositions(signal, std::max(a, b), std::min(a, b));
    fail(word,
        found.isVector()
            ? QString("is not in the range %1 of %2").arg(found.rangeText(), shownText(found.path))
            : QString("has an index, but %1 has only one bit").arg(shownText(found.path)));
}

/// Adds the bits that are not chosen yet, as one item for each row of bits.
void Chooser::takePositions(int signal, int high, int low)
{
    const DesignSignal& from = m_design.items.at(signal);
    QVector<bool>& taken = m_taken[signal];
    taken.resize(from.width);
    int begin = -1;
    for (int position = high; position >= low - 1; --position) {
        const bool isFree = position >= low && !taken.at(position);
        if (isFree && begin < 0)
            begin = position;
        if (!isFree && begin >= 0) {
            m_chosen.items += partOfSignal(from, begin, position + 1);
            begin = -1;
        }
        if (isFree)
            taken[position] = true;
    }
}

ChosenSignals Chooser::finish()
{
    const auto warn = [this](const QStringList& names, const char* why) {
        const int more = names.size() - kMostNames;
        if (!names.isEmpty())
            m_chosen.warnings += QString("left out, because %1: %2%3")
                                     .arg(why, shownText(names.mid(0, kMostNames).join(", ")),
                                         more > 0 ? QString(" and %1 more").arg(more) : QString());
    };
    m_memories.removeDuplicates();
    m_clocks.removeDuplicates();
    warn(m_memories, "memories cannot be watched");
    warn(m_clocks, "it is the sample clock");
    return m_chosen;
}

}

SignalItem partOfSignal(const DesignSignal& signal, int high, int low)
{
    SignalItem item;
    item.name = signal.bitName(high);
    if (high == low)
        return item;
    item.name = signal.path;
    if (high - low + 1 < signal.width)
        item.name += QString("[%1:%2]").arg(
            QString::number(signal.indexAt(high)), QString::number(signal.indexAt(low)));
    for (int position = high; position >= low; --position) {
        item.subItems += SignalItem();
        item.subItems.last().name = signal.bitName(position);
    }
    return item;
}

ChosenSignals chooseSignals(
    const DesignIndex& index, const QStringList& words, const QString& clock)
{
    Chooser chooser(index, clock);
    for (const QString& word : words)
        chooser.take(word);
    return chooser.finish();
}

}
