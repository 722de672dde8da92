#ifndef OXAUTILS_DESIGN_DESIGN_INDEX_H
#define OXAUTILS_DESIGN_DESIGN_INDEX_H

#include "oxautils/design/design.h"

#include <QHash>

namespace OXA {

/// One bit of a design's signal.
struct DesignBit {
    int signal = -1; ///< where in `items`; -1 for none
    int position = 0; ///< from 0 at the last bit of its range
};

/// Finds the signals of a design by name. The design has to outlive it.
///
/// A name is a path, or as many of its last components as make it unique; '/' and '.' both separate
/// components. In a pattern '*' stands for any text, scopes included, and '?' for one character.
class OXAUTILS_EXPORT DesignIndex {
public:
    explicit DesignIndex(const Design& design);

    const Design& design() const { return m_design; }

    /// The signal `name`, in which '*' and '?' are characters as any other; -1 when there is none
    /// or when several are meant.
    int signal(const QString& name) const;

    /// The bit "soc/pc[3]", or the signal of one bit "soc/run". Of a signal of one bit, "[0]" may
    /// be said as well.
    DesignBit bit(const QString& name) const;

    /// The signals that `pattern` means, in the order of the design: those whose path, or the end
    /// of it from a component on, it matches. Without '*' and '?' the one of that name, or all that
    /// it may mean.
    QVector<int> matching(const QString& pattern) const;

    /// At most `count` paths that look most like `name`, the nearest first.
    QStringList nearest(const QString& name, int count = 3) const;

    /// "is not in the design; the nearest names are ..." for a name that `signal` does not find. To
    /// search for these names takes time with the size of the design.
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
