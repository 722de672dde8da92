#ifndef APPS_OXA_EDITOR_DESIGN_DESIGN_TREE_H
#define APPS_OXA_EDITOR_DESIGN_DESIGN_TREE_H

#include "oxautils/design/design_index.h"

#include <QVector>

#include <vector>

/// A design that was read, and its hierarchy of scopes and signals. It never changes, so that
/// threads may share it.
class DesignTree {
public:
    /// A scope, or a signal, which has no children.
    struct Node {
        int parent = -1; ///< comes before its children; -1 for the root
        int signal = -1; ///< in the design's items; -1 for a scope
        QString name; ///< the last component of the path
        QVector<int> children; ///< scopes before signals
    };

    explicit DesignTree(const OXA::Design& design);
    DesignTree(const DesignTree&) = delete;
    DesignTree& operator=(const DesignTree&) = delete;

    const OXA::Design& design() const { return m_design; }
    const OXA::DesignIndex& index() const { return m_index; }

    /// The root is the first; it stands for no scope.
    const std::vector<Node>& nodes() const { return m_nodes; }
    int nodeOf(int signal) const { return m_nodeOf.at(signal); }

    /// The signals that `filter` means, ascending: a part of their paths in letters of any case, or
    /// a pattern with '*' and '?' as everywhere. When the filter before found `before`, only those
    /// are looked at when `filter` can mean no others.
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
    QStringList m_keys; // of the signals: paths as `matching` compares them
};

/// Whether a configuration can name the signal: a memory cannot be watched, and some characters
/// cannot stand in its file.
bool canBeWatched(const OXA::DesignSignal& signal);

#endif
