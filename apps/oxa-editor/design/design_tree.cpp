// SPDX-License-Identifier: Apache-2.0
#include "design_tree.h"

#include "oxa-editor/signal_names.h"

#include <algorithm>

using namespace OXA;

namespace {

bool isPattern(const QString& filter) { return filter.contains('*') || filter.contains('?'); }

QString keyOf(const QString& text) { return text.toLower().replace('.', '/'); }

}

DesignTree::DesignTree(const Design& design)
    : m_design(design)
    , m_index(m_design)
{
    const int count = m_design.items.size();
    m_nodes.reserve(size_t(count) * 2);
    m_nodeOf.reserve(count);
    m_keys.reserve(count);
    m_nodes.push_back({});
    m_scopes.insert(QString(), 0);
    for (int i = 0; i < count; ++i) {
        const QString& path = m_design.items.at(i).path;
        const int slash = path.lastIndexOf('/');
        m_nodeOf += add(scope(path.left(qMax(0, slash))), i, path.mid(slash + 1));
        m_keys += keyOf(path);
    }
    for (Node& node : m_nodes)
        std::stable_partition(node.children.begin(), node.children.end(),
            [this](int child) { return m_nodes[size_t(child)].signal < 0; });
}

/// The node of the scope `path`; creates it and its parents when they are new.
int DesignTree::scope(const QString& path)
{
    const auto known = m_scopes.constFind(path);
    if (known != m_scopes.constEnd())
        return *known;
    const int slash = path.lastIndexOf('/');
    const int node = add(scope(path.left(qMax(0, slash))), -1, path.mid(slash + 1));
    m_scopes.insert(path, node);
    return node;
}

int DesignTree::add(int parent, int signal, const QString& name)
{
    const int node = int(m_nodes.size());
    m_nodes.push_back({parent, signal, name, {}});
    m_nodes[size_t(parent)].children += node;
    return node;
}

QVector<int> DesignTree::matching(
    const QString& filter, const QString& filterBefore, const QVector<int>& before) const
{
    if (isPattern(filter))
        return m_index.matching(filter);
    const QString key = keyOf(filter);
    QVector<int> found;
    const auto look = [&](int signal) {
        if (m_keys.at(signal).contains(key))
            found += signal;
    };
    if (!filterBefore.isEmpty() && !isPattern(filterBefore) && key.contains(keyOf(filterBefore))) {
        for (const int signal : before)
            look(signal);
    } else {
        for (int signal = 0; signal < m_keys.size(); ++signal)
            look(signal);
    }
    return found;
}

bool canBeWatched(const DesignSignal& signal)
{
    return !signal.isMemory() && cleanName(signal.path) == signal.path;
}
