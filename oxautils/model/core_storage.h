// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_CORE_STORAGE_H
#define OXAUTILS_MODEL_CORE_STORAGE_H

#include "oxautils/oxautils_export.h"

#include <QStringList>

#include <vector>

namespace OXA {

/// Which samples of a core its memory stores. Units, counters and levels see every sample.
///
/// Stored besides: the first sample of a run and of each window, the trigger sample, the last
/// sample before a stop, and a sample whose gap would not fit into `gapBits`.
struct CoreStorage {
    /// What makes a sample be stored.
    enum Keep {
        All, ///< every one is
        Changes, ///< a data signal differs from the sample before
        When, ///< the expression `when` is true
    };

    Keep keep = All; ///< what makes a sample be stored
    /// Bits of a stored word for its gap, the number of samples passed over in front of it: 0 to
    /// `kMostGapBits`, with `Changes` at least 1. With 0, the times between samples are not known.
    int gapBits = kDefaultGapBits;
    /// With `Changes`: the only data signals that count, by the names of their bits or buses;
    /// empty: all.
    QStringList watch;
    QString when; ///< with `When`: an expression over the core's match units
    /// A window ends this many samples behind its trigger though it is not full; 0: never.
    qint64 limit = 0;

    static constexpr int kDefaultGapBits = 16; ///< of a file that names none
    static constexpr int kMostGapBits = 32; ///< of a gap
    static constexpr qint64 kMostLimit = 0xffffffffLL; ///< samples

    /// Whether the core stores all samples, so that nothing about it is written or generated.
    bool isDefault() const { return keep == All; }

    /// Bits of a stored word beside the sample and the trigger's mark: its gap, and with a limit
    /// the mark of a window's last sample.
    OXAUTILS_EXPORT int extraBits() const;
};

/// The words for `CoreStorage::Keep` in files and texts, in its order.
constexpr const char* kKeepWords[] = {"all", "changes", "when"};

/// Whether all members are equal.
OXAUTILS_EXPORT bool operator==(const CoreStorage& a, const CoreStorage& b);
/// Whether any member differs.
inline bool operator!=(const CoreStorage& a, const CoreStorage& b) { return !(a == b); }

/// The names of `CoreStorage::watch` as one text, in which spaces separate them.
OXAUTILS_EXPORT QString watchText(const QStringList& names);

/// The names in such a text. A name that begins with a backslash ends with a space, as in Verilog.
OXAUTILS_EXPORT QStringList watchFromText(const QString& text);

class AoCore;

/// For each bit of the data signals of `core`, the most significant first: whether its change makes
/// a sample be stored, with `CoreStorage::Changes`.
OXAUTILS_EXPORT std::vector<bool> watchedForChanges(const AoCore& core);

/// The names that `CoreStorage::watch` can contain for `core`: those of its data signals, of their
/// buses and bits, each once.
OXAUTILS_EXPORT QStringList watchableNames(const AoCore& core);

}

#endif
