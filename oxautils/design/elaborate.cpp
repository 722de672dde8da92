// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/elaborate.h"

#include "oxautils/design/natural_order.h"
#include "oxautils/model/shown_text.h"

#include <QSet>

#include <algorithm>
#include <numeric>

namespace OXA {

namespace {

constexpr int kMostBits = 1 << 28; // of the whole design
constexpr int kDeepest = 256; // levels of modules

/// Sets of bits that are connected.
class BitSets {
public:
    int add(int count)
    {
        const int first = size();
        m_parents.resize(m_parents.size() + size_t(count));
        std::iota(m_parents.begin() + first, m_parents.end(), first);
        return first;
    }

    int root(int bit)
    {
        while (m_parents[size_t(bit)] != bit) {
            m_parents[size_t(bit)] = m_parents[size_t(m_parents[size_t(bit)])];
            bit = m_parents[size_t(bit)];
        }
        return bit;
    }

    void join(int a, int b) { m_parents[size_t(root(a))] = root(b); }
    int size() const { return int(m_parents.size()); }

private:
    std::vector<int> m_parents;
};

class Elaboration {
public:
    Elaboration(const RtlilDesign& modules, const SourceScan& escapes, Design& design)
        : m_modules(modules)
        , m_escapes(escapes)
        , m_design(design)
    {
    }

    bool run()
    {
        const auto top = m_modules.modules.constFind(m_modules.top);
        if (top == m_modules.modules.constEnd())
            return false;
        m_design.top = QString::fromUtf8(m_modules.top.mid(1));
        add(*top, m_design.top, QString());
        findClocks();
        sortItems();
        return m_fits;
    }

private:
    struct Register {
        int clock;
        bool fallingEdge;
    };

    // One instance of a module; returns its first bit.
    int add(const RtlilModule& module, const QString& path, const QString& flatPrefix)
    {
        const int first = m_sets.add(module.bitCount);
        for (const RtlilModule::Item& item : module.items)
            addItem(item, first, path, flatPrefix);
        for (const auto& [left, right] : module.connections)
            connect(left, first, right, first);
        for (const RtlilModule::Register& cell : module.registers)
            m_registers.push_back({cell.output + first, cell.clock + first, cell.fallingEdge});
        ++m_depth;
        for (const RtlilModule::Instance& instance : module.instances)
            addInstance(instance, first, path, flatPrefix);
        --m_depth;
        return first;
    }

    void addItem(
        const RtlilModule::Item& item, int first, const QString& path, const QString& flatPrefix)
    {
        DesignSignal signal = item.signal;
        signal.path = path + '/' + m_escapes.components(item.name).join('/');
        signal.flatName = freeName(flatPrefix + item.name);
        if (!flatPrefix.isEmpty())
            signal.direction = DesignSignal::Inside;
        m_items.emplace_back(std::move(signal), first + item.first);
    }

    // Flattening gives a net of a module below another name when there is one of its name above.
    QString freeName(const QString& name)
    {
        QString result = name;
        for (int i = 1; m_flatNames.contains(result); ++i)
            result = name + '_' + QString::number(i);
        m_flatNames.insert(result);
        return result;
    }

    void addInstance(const RtlilModule::Instance& instance, int first, const QString& path,
        const QString& flatPrefix)
    {
        const auto used = m_modules.modules.constFind(instance.module);
        if (used == m_modules.modules.constEnd()) {
            m_boxes.insert(QString::fromUtf8(instance.module.mid(1)));
            return;
        }
        m_fits = m_fits && m_depth < kDeepest && m_sets.size() < kMostBits - used->bitCount;
        if (!m_fits)
            return;
        const int inside = add(*used, path + '/' + m_escapes.components(instance.name).join('/'),
            flatPrefix + instance.name + '.');
        for (const auto& [port, bits] : instance.connections) {
            const RtlilModule::Wire wire = used->wires.value(port);
            RtlilBits portBits(static_cast<size_t>(wire.width));
            std::iota(portBits.begin(), portBits.end(), wire.first);
            connect(portBits, inside, bits, first);
        }
    }

    void connect(const RtlilBits& a, int firstA, const RtlilBits& b, int firstB)
    {
        for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
            if (a[i] >= 0 && b[i] >= 0)
                m_sets.join(a[i] + firstA, b[i] + firstB);
        }
    }

    // A net of a clock has many names: use that of the outermost scope, ports first.
    void findClocks()
    {
        QHash<int, Register> cells; // by the set of the output
        QHash<int, QString> names; // by the set of the clock
        for (const RtlilModule::Register& cell : m_registers) {
            const int clock = m_sets.root(cell.clock);
            cells.insert(m_sets.root(cell.output), {clock, cell.fallingEdge});
            names.insert(clock, {});
        }
        QHash<int, std::pair<int, int>> ranks;
        for (const auto& [signal, first] : m_items) {
            const std::pair<int, int> rank(
                signal.path.count('/') * 2 + (signal.direction == DesignSignal::Inside ? 1 : 0),
                signal.path.size());
            for (int i = 0; i < signal.width && !signal.isMemory(); ++i) {
                const auto name = names.find(m_sets.root(first + i));
                if (name == names.end())
                    continue;
                m_clockNets.emplace_back(signal.bitName(i), name.key());
                if (!name->isEmpty() && ranks[name.key()] <= rank)
                    continue;
                *name = signal.bitName(i);
                ranks[name.key()] = rank;
            }
        }
        setClocks(cells, names);
    }

    void setClocks(const QHash<int, Register>& cells, const QHash<int, QString>& names)
    {
        for (const QString& name : names) {
            if (!name.isEmpty())
                m_design.clocks += name;
        }
        std::sort(m_design.clocks.begin(), m_design.clocks.end(), naturallyLess);
        QHash<QString, int> numbers;
        for (int i = 0; i < m_design.clocks.size(); ++i)
            numbers.insert(m_design.clocks.at(i), i);
        for (const auto& [net, clock] : m_clockNets)
            m_design.clockNets.insert(net, numbers.value(names.value(clock)));
        for (auto& [signal, first] : m_items) {
            for (int i = 0; i < signal.width && !signal.isMemory() && !signal.isRegister(); ++i) {
                const auto cell = cells.constFind(m_sets.root(first + i));
                if (cell == cells.constEnd())
                    continue;
                signal.clock = numbers.value(names.value(cell->clock), -1);
                signal.fallingEdge = cell->fallingEdge;
            }
        }
    }

    void sortItems()
    {
        std::stable_sort(m_items.begin(), m_items.end(),
            [](const auto& a, const auto& b) { return naturallyLess(a.first.path, b.first.path); });
        m_design.items.reserve(int(m_items.size()));
        for (auto& item : m_items)
            addSorted(std::move(item.first));
        QStringList boxes = m_boxes.values();
        boxes.sort();
        for (const QString& box : boxes)
            m_design.warnings += QString("module \"%1\" is not in the sources: its ports can be "
                                         "watched, its content cannot")
                                     .arg(shownText(box));
    }

    // A hierarchical reference has declared a wire of the same path, which comes first. The net
    // that it refers to is wanted.
    void addSorted(DesignSignal signal)
    {
        if (!m_design.items.isEmpty() && m_design.items.last().path == signal.path)
            m_design.items.last() = std::move(signal);
        else
            m_design.items += std::move(signal);
    }

    const RtlilDesign& m_modules;
    const SourceScan& m_escapes;
    Design& m_design;
    BitSets m_sets;
    std::vector<std::pair<DesignSignal, int>> m_items; // with their first bits
    std::vector<RtlilModule::Register> m_registers;
    std::vector<std::pair<QString, int>> m_clockNets; // names and sets
    QSet<QString> m_flatNames;
    QSet<QString> m_boxes;
    int m_depth = 0;
    bool m_fits = true;
};

}

bool elaborate(const RtlilDesign& modules, const SourceScan& escapes, Design& design)
{
    return Elaboration(modules, escapes, design).run();
}

}
