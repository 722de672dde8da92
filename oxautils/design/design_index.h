// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_DESIGN_INDEX_H
#define OXAUTILS_DESIGN_DESIGN_INDEX_H

#include "oxautils/design/design.h"

#include <QHash>

namespace OXA {

/// One bit of a signal.
struct DesignBit {
    int signal = -1; ///< position in `items`; -1 for none
    int position = 0; ///< from 0 at the last bit of its range
};

/// Finds the signals of a design by name. The design has to outlive it.
///
/// A name is a path, or as many of its last components as make it unique; '/' and '.' both separate
/// components. In a pattern '*' stands for any text, scopes included, and '?' for one character.
class OXAUTILS_EXPORT DesignIndex {
public:
    explicit DesignIndex(const Design& design); ///< keeps a reference to it

    const Design& design() const { return m_design; } ///< that it was made for

    /// The signal `name`, in which '*' and '?' are ordinary characters; -1 when there is none, or
    /// more than one.
    int signal(const QString& name) const;

    /// The bit "soc/pc[3]", or the signal of one bit "soc/run", also written "soc/run[0]".
    DesignBit bit(const QString& name) const;

    /// The signals that `pattern` matches, in the order of the design: it matches the path, or its
    /// end from a component on. Without '*' and '?', the signal of that name, or all that the name
    /// may stand for.
    QVector<int> matching(const QString& pattern) const;

    /// At most `count` paths that are most similar to `name`, best first; equally similar ones in
    /// natural order.
    QStringList nearest(const QString& name, int count = 3) const;

    /// "is not in the design; the nearest names are ..." for a name that `signal` does not find.
    /// The search for these names takes time proportional to the size of the design.
    QString whyMissing(const QString& name, bool withNearest = true) const;

private:
    QVector<int> named(const QString& key) const;

    const Design& m_design;
    QHash<QString, int> m_byPath;
    QMultiHash<QString, int> m_byKey; // the path with one kind of separator
    QMultiHash<QString, int> m_byLeaf;
};

}

#endif
