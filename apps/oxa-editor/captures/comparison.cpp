// SPDX-License-Identifier: Apache-2.0
#include "comparison.h"

#include "oxacapture/files/every_sample.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

using namespace OXA_CAPTURE;

namespace {

constexpr qint64 kMostBits = qint64(1) << 27; // of all samples; more would take seconds

enum Field { InA, InB, Differing, AnyDiffers };

QString tr(const char* text) { return QCoreApplication::translate("Comparison", text); }

/// Signals that both cores have, and where their bits are in each.
struct Common {
    QList<OXA::SignalItem> items;
    std::vector<int> inA;
    std::vector<int> inB;
};

QHash<QString, int> bitsByName(const CapturedCore& core)
{
    QHash<QString, int> places;
    const QStringList names = OXA::flattenedNames(core.items);
    for (int bit = names.size() - 1; bit >= 0; --bit)
        places.insert(names.at(bit), bit);
    return places;
}

/// Of a bus, the bits that are in both.
Common commonSignals(const CapturedCore& a, const CapturedCore& b, QStringList& onlyInOne)
{
    Common common;
    const QHash<QString, int> inA = bitsByName(a);
    const QHash<QString, int> inB = bitsByName(b);
    for (const OXA::SignalItem& item : a.items) {
        OXA::SignalItem kept = item;
        kept.subItems.clear();
        const QStringList bits = OXA::flattenedNames({item});
        const size_t before = common.inA.size();
        for (int i = 0; i < bits.size(); ++i) {
            if (!inB.contains(bits.at(i)))
                continue;
            common.inA.push_back(inA.value(bits.at(i)));
            common.inB.push_back(inB.value(bits.at(i)));
            if (item.isBus())
                kept.subItems += item.subItems.at(i);
        }
        if (common.inA.size() > before)
            common.items += kept;
        else
            onlyInOne += item.name;
    }
    for (const OXA::SignalItem& item : b.items) {
        const QStringList bits = OXA::flattenedNames({item});
        if (std::none_of(
                bits.begin(), bits.end(), [&](const QString& bit) { return inA.contains(bit); }))
            onlyInOne += item.name;
    }
    return common;
}

/// Two windows on one axis of samples.
struct WindowPair {
    const SampleTable& a;
    const SampleTable& b;
    qint64 beginA; // on the axis
    qint64 beginB;
    qint64 trigger;

    qint64 samples() const { return std::max(beginA + a.size(), beginB + b.size()); }
};

WindowPair pairOf(const CapturedWindow& a, const CapturedWindow& b)
{
    const qint64 inA = a.triggerOffset();
    const qint64 inB = b.triggerOffset();
    if (inA == kNoSample || inB == kNoSample)
        return {a.samples, b.samples, 0, 0, kNoSample};
    const qint64 trigger = std::max(inA, inB);
    return {a.samples, b.samples, trigger - inA, trigger - inB, trigger};
}

/// Makes the samples of both, and of their differences.
class Comparer {
public:
    explicit Comparer(const Common& common)
        : m_common(common)
        , m_layout({int(common.inA.size()), int(common.inB.size()), int(common.items.size()), 1})
        , m_row(size_t(m_layout.rowWords()))
        , m_samples(std::make_shared<SampleTable>(m_layout))
        , m_differs(size_t(common.items.size()))
    {
    }

    qint64 size() const { return m_samples->size(); }
    const std::shared_ptr<SampleTable>& samples() const { return m_samples; }
    bool differs(int item) const { return m_differs[size_t(item)]; }
    qint64 differences() const { return m_differences; }

    void add(const WindowPair& pair)
    {
        const qint64 count = pair.samples();
        for (qint64 at = 0; at < count; ++at)
            addSample(pair, at - pair.beginA, at - pair.beginB);
    }

private:
    void addSample(const WindowPair& pair, qint64 a, qint64 b)
    {
        const bool isInA = a >= 0 && a < pair.a.size();
        const bool isInB = b >= 0 && b < pair.b.size();
        bool any = false;
        size_t bit = 0;
        for (int item = 0; item < m_common.items.size(); ++item) {
            bool differs = false;
            for (int i = 0; i < m_common.items.at(item).bitCount(); ++i, ++bit) {
                const Logic inA = isInA ? pair.a.bit(a, 0, m_common.inA[bit]) : Logic::Unknown;
                const Logic inB = isInB ? pair.b.bit(b, 0, m_common.inB[bit]) : Logic::Unknown;
                setBit(m_layout, m_row, InA, int(bit), inA);
                setBit(m_layout, m_row, InB, int(bit), inB);
                differs = differs || (isInA && isInB && inA != inB);
            }
            setBit(m_layout, m_row, Differing, item, differs ? Logic::One : Logic::Zero);
            m_differs[size_t(item)] = m_differs[size_t(item)] || differs;
            any = any || differs;
        }
        setBit(m_layout, m_row, AnyDiffers, 0, any ? Logic::One : Logic::Zero);
        m_differences += any;
        m_samples->append(m_row.data());
    }

    const Common& m_common;
    SampleLayout m_layout;
    std::vector<quint64> m_row;
    std::shared_ptr<SampleTable> m_samples;
    std::vector<bool> m_differs; // by items
    qint64 m_differences = 0;
};

OXA::SignalItem named(OXA::SignalItem item, const QString& form)
{
    item.text = form.arg(item.text.isEmpty() ? item.name : item.text);
    return item;
}

/// The rows of A, B and the differences, in this order for each signal that differs.
WaveRows rowsOf(const Common& common, const Comparer& comparer)
{
    QList<OXA::SignalItem> a;
    QList<OXA::SignalItem> b;
    QList<OXA::SignalItem> differences;
    for (int i = 0; i < common.items.size(); ++i) {
        const OXA::SignalItem& item = common.items.at(i);
        a += comparer.differs(i) ? named(item, "%1 (A)") : item;
        b += named(item, "%1 (B)");
        OXA::SignalItem difference;
        difference.name = named(item, QString(QChar(0x2260)) + " %1").text;
        differences += difference;
    }
    OXA::SignalItem any;
    any.name = tr("differences");
    const WaveRows rowsA = signalRows(a, comparer.samples(), InA);
    const WaveRows rowsB = signalRows(b, comparer.samples(), InB);
    const WaveRows rowsOfDifferences = signalRows(differences, comparer.samples(), Differing, true);
    WaveRows rows = signalRows({any}, comparer.samples(), AnyDiffers, true);
    for (size_t i = 0; i < rowsA.size(); ++i) {
        rows.push_back(rowsA[i]);
        if (!comparer.differs(int(i)))
            continue;
        rows.push_back(rowsB[i]);
        rows.push_back(rowsOfDifferences[i]);
    }
    return rows;
}

}

bool Comparison::differsAt(qint64 sample) const
{
    return sample >= 0 && sample < waveform->samples
        && waveform->rows.front()->bitAt(sample) == Logic::One;
}

qint64 Comparison::find(qint64 sample, int step) const
{
    qint64 at = sample;
    do {
        at = step > 0 ? changes.next(at + 1) : changes.previous(at - 1);
    } while (at >= 0 && at < waveform->samples && !differsAt(at));
    return at < waveform->samples ? at : -1;
}

bool compareCores(const CapturedCore& storedA, const CapturedCore& storedB, Comparison& comparison)
{
    comparison = Comparison();
    CapturedCore a = storedA;
    CapturedCore b = storedB;
    if (!addPassedOver(a, kMostBits) || !addPassedOver(b, kMostBits))
        return false;
    const Common common = commonSignals(a, b, comparison.onlyInOne);
    const size_t windows = std::min(a.windows.size(), b.windows.size());
    if (common.items.isEmpty())
        return true;
    auto waveform = std::make_shared<Waveform>();
    Comparer comparer(common);
    for (size_t i = 0; i < windows; ++i) {
        const WindowPair pair = pairOf(a.windows[i], b.windows[i]);
        const qint64 first = comparer.size();
        if ((first + pair.samples()) * qint64(common.inA.size()) > kMostBits)
            return false;
        waveform->windows.push_back(
            {first, pair.samples(), pair.trigger == kNoSample ? kNoSample : first + pair.trigger});
        comparer.add(pair);
    }
    waveform->samples = comparer.size();
    waveform->captured = a;
    waveform->isCut = true;
    waveform->rows = rowsOf(common, comparer);
    comparison.samples = comparer.differences();
    comparison.changes = ChangeIndex(waveform->samples);
    for (const auto& row : waveform->rows) {
        if (row->isEvent)
            comparison.changes.unite(row->changes);
    }
    for (int i = 0; i < common.items.size(); ++i) {
        if (comparer.differs(i))
            comparison.differing += common.items.at(i).name;
    }
    comparison.waveform = waveform;
    if (comparison.differsAt(0))
        comparison.changes.insert(0); // a change to the first difference
    return true;
}
