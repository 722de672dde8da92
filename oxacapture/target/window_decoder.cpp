// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/window_decoder.h"

#include "files/fail.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

qint64 completeWindows(const CoreStatus& status, const TriggerSetup& setup)
{
    return status.complete ? setup.windowNum : status.windows;
}

qint64 samplesFromTrigger(const TriggerSetup& setup)
{
    return setup.captureAmount - setup.triggerPos;
}

bool hasOpenWindow(const CoreStatus& status) { return status.open && !status.complete; }

// The words of one window, which it uses as a ring, counted from its first word.
class WindowWords {
public:
    WindowWords(
        const CoreIdentity& core, const BitString& memory, bool marked, qint64 first, qint64 amount)
        : m_core(core)
        , m_memory(memory)
        , m_wordBits(marked ? core.wordBits() : core.unmarkedBits())
        , m_first(first)
        , m_amount(amount)
    {
    }

    bool isMarked(qint64 word) const { return m_memory.at(at(word) + m_wordBits - 1); }

    /// The word after the last one of a window that ends at most `most` words after `trigger`.
    qint64 endAfter(qint64 trigger, qint64 most) const
    {
        qint64 last = trigger;
        while (m_core.marksEnds && last < trigger + most
            && !m_memory.at(at(last) + m_core.unmarkedBits()))
            ++last;
        return m_core.marksEnds ? last + 1 : trigger + most + 1;
    }

    /// The first marked word from 0 to `end` - 1; `kNoSample` when there is none.
    qint64 firstMarked(qint64 end) const
    {
        for (qint64 word = 0; word < end; ++word) {
            if (isMarked(word))
                return word;
        }
        return kNoSample;
    }

    SampleTable samples(qint64 from, qint64 count) const
    {
        const int signalCount = m_core.signalCount;
        const SampleLayout layout({signalCount});
        SampleTable table(layout);
        std::vector<quint64> row(size_t(layout.rowWords()));
        for (qint64 word = from; word < from + count; ++word) {
            for (int i = 0; i < layout.words(0); ++i)
                row[size_t(i)]
                    = m_memory.number(at(word) + 64 * i, std::min(64, signalCount - 64 * i));
            table.append(row.data());
        }
        return table;
    }

    /// The numbers of the same samples, counted from the first one, by their gaps.
    std::vector<qint64> numbers(qint64 from, qint64 count) const
    {
        std::vector<qint64> numbers;
        for (qint64 word = from; m_core.gapBits > 0 && word < from + count; ++word) {
            const auto gap = qint64(m_memory.number(at(word) + m_core.signalCount, m_core.gapBits));
            numbers.push_back(numbers.empty() ? 0 : numbers.back() + 1 + gap);
        }
        return numbers;
    }

private:
    int at(qint64 word) const
    {
        const qint64 inWindow = (word % m_amount + m_amount) % m_amount;
        return int(m_first + inWindow) * m_wordBits;
    }

    const CoreIdentity& m_core;
    const BitString& m_memory;
    int m_wordBits;
    qint64 m_first;
    qint64 m_amount;
};

DecodedWindow cut(const WindowWords& words, qint64 from, qint64 trigger, qint64 end)
{
    return {words.samples(from, end - from), trigger - from, words.numbers(from, end - from)};
}

DecodedWindow completeWindow(
    const WindowWords& words, const TriggerSetup& setup, qint64 trigger, bool isShort)
{
    const qint64 from = trigger - setup.triggerPos;
    return cut(words, isShort ? std::max(from, qint64(0)) : from, trigger,
        words.endAfter(trigger, samplesFromTrigger(setup) - 1));
}

// A window that a stop cut short: its last sample is before the status's position.
DecodedWindow openWindow(
    const WindowWords& words, const TriggerSetup& setup, const CoreStatus& status, qint64 trigger)
{
    const qint64 from = trigger - setup.triggerPos;
    if (!status.wentRound)
        return cut(words, std::max(from, qint64(0)), trigger, status.position);
    const qint64 behind = (status.position - trigger + setup.captureAmount) % setup.captureAmount;
    return cut(words, from, trigger, trigger + behind);
}

// The trigger of a window that ends at the status's position; `kNoSample` when it is before the
// window.
qint64 endTrigger(const CoreStatus& status, const TriggerSetup& setup, bool isShort)
{
    const qint64 trigger = status.position - samplesFromTrigger(setup);
    return trigger >= 0 ? trigger : isShort ? kNoSample : trigger + setup.captureAmount;
}

// Why the status cannot be that of a core at rest after a run with these settings: an intact status
// can come from an unknown design.
QString complaint(const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup)
{
    if (status.position > (core.lite ? core.depth : setup.captureAmount))
        return QString("its position is sample %1, outside of its memory").arg(status.position);
    if (!core.lite && completeWindows(status, setup) > setup.windowNum)
        return QString("it took %1 windows instead of %2")
            .arg(QString::number(status.windows), QString::number(setup.windowNum));
    return {};
}

}

qint64 usedWords(const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup)
{
    if (core.lite)
        return status.complete ? core.depth : status.position;
    return (completeWindows(status, setup) + (hasOpenWindow(status) ? 1 : 0)) * setup.captureAmount;
}

qint64 waitingWords(const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup)
{
    if (core.lite || status.complete || status.open)
        return 0;
    return status.wentRound ? setup.captureAmount : status.position;
}

bool samplesSuffice(const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup)
{
    return !core.lite && core.signalCount > 0 && setup.windowNum == 1 && status.complete
        && !core.marksEnds;
}

bool decodeWindows(const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup,
    const BitString& windowWords, const BitString& memory, std::vector<DecodedWindow>& windows,
    QString* error)
{
    windows.clear();
    const QString fault = complaint(core, status, setup);
    if (!fault.isEmpty())
        return OXA::fail(error, fault);
    const qint64 words = usedWords(core, status, setup);
    if (core.lite) {
        if (words > 0)
            windows.push_back(
                {WindowWords(core, memory, true, 0, words).samples(0, words), kNoSample});
        return true;
    }
    const qint64 amount = setup.captureAmount;
    const bool unmarked = samplesSuffice(core, status, setup);
    for (qint64 window = 0; window * amount < words; ++window) {
        const WindowWords own(core, memory, !unmarked, window * amount, amount);
        const bool isOpen = window == completeWindows(status, setup);
        const int wordAt = int(window) * core.windowBits();
        const bool isShort = !isOpen && windowWords.at(wordAt);
        const qint64 trigger = unmarked
            ? endTrigger(status, setup, isShort)
            : own.firstMarked(isOpen && !status.wentRound ? status.position : amount);
        // A core stopped after its trigger has passed it.
        if (trigger == kNoSample || (isOpen && trigger == status.position % amount))
            return OXA::fail(error, QString("window %1 has no trigger").arg(window));
        windows.push_back(isOpen ? openWindow(own, setup, status, trigger)
                                 : completeWindow(own, setup, trigger, isShort));
        windows.back().forced = !core.forcedBy.isEmpty() && windowWords.at(wordAt + 1);
        if (core.stamps)
            windows.back().stamp
                = quint32(windowWords.number(wordAt + core.stampAt(), CoreIdentity::kStampBits));
    }
    return true;
}

bool decodeWaiting(const CoreIdentity& core, const CoreStatus& status, const TriggerSetup& setup,
    const BitString& memory, DecodedWindow& waiting, QString* error)
{
    waiting = {SampleTable(SampleLayout({core.signalCount}))};
    const QString fault = complaint(core, status, setup);
    if (!fault.isEmpty())
        return OXA::fail(error, fault);
    const qint64 count = waitingWords(core, status, setup);
    if (count == 0)
        return true;
    const WindowWords words(
        core, memory, true, usedWords(core, status, setup), setup.captureAmount);
    if (words.firstMarked(count) != kNoSample)
        return OXA::fail(error, "it waits for a trigger, but its memory has a trigger");
    const qint64 from = status.wentRound ? status.position : 0;
    waiting.samples = words.samples(from, count);
    waiting.stored = words.numbers(from, count);
    return true;
}

}
