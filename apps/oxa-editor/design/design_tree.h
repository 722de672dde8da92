// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_DESIGN_DESIGN_TREE_H
#define APPS_OXA_EDITOR_DESIGN_DESIGN_TREE_H

#include "oxautils/design/design_index.h"

#include <QVector>

#include <vector>

/// The hierarchy of scopes and signals of a design. It never changes, so threads may share it.
class DesignTree {
public:
    /// A scope, or a signal, which has no children.
    struct Node {
        int parent = -1; ///< has a lower number than its children; -1 for the root
        int signal = -1; ///< in the design's items; -1 for a scope
        QString name; ///< the last component of the path
        QVector<int> children; ///< scopes before signals
    };

    explicit DesignTree(const OXA::Design& design);
    DesignTree(const DesignTree&) = delete;
    DesignTree& operator=(const DesignTree&) = delete;

    const OXA::Design& design() const { return m_design; }
    const OXA::DesignIndex& index() const { return m_index; }

    /// The root is the first; it is not a scope.
    const std::vector<Node>& nodes() const { return m_nodes; }
    int nodeOf(int signal) const { return m_nodeOf.at(signal); }

    /// The signals that match `filter`, ascending: part of a path, in upper or lower case, or a
    /// pattern with '*' and '?'. `before`: the matches of `filterBefore`; when `filter` can match
    /// no others, only these are searched.
    QVector<int> matching(const QString& filter, const QString& filterBefore = {},
        const QVector<int>& before = {}) const;

private:
    int scope(const QString& path);
    int add(int parent, int signal, const QString& name);

    const OXA::Design m_design;
    const OXA::DesignIndex m_index;
    std::vector<Node> m_nodes;
    QVector<int> m_nodeOf;
    QHash<QString, int> m_scopes; // by path
    QStringList m_keys; // the signals' paths as `matching` compares them
};

/// Whether a configuration can name the signal: not a memory, nor a name with characters that its
/// file cannot contain.
bool canBeWatched(const OXA::DesignSignal& signal);

#endif
