// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_SIGNAL_FINDER_H
#define OXACAPTURE_WAVEFORM_SIGNAL_FINDER_H

#include "oxacapture/waveform/vcd_reader.h"

#include <QStringList>

#include <unordered_map>

namespace OXA_CAPTURE {

/// One bit of a waveform's variable.
struct WaveformBit {
    int code = -1; ///< of the variable
    int bit = 0; ///< 0 is the variable's first, most significant bit
};

/// Finds a design's signals among the variables of a waveform.
///
/// A signal is named by its full hierarchical name, or by as many of its last components as make it
/// unique; '.' and '/' both separate components. "data[3]" is a bit of the vector "data", or a
/// variable of that name. Variables of one code are one signal.
class OXACAPTURE_EXPORT SignalFinder {
public:
    explicit SignalFinder(const VcdReader& waveform); ///< it has to outlive this

    /// The signal `name`; a bit without code when it is missing or ambiguous. `messages` (may be
    /// null) then gets the reason; for the first few missing signals with the names that are most
    /// similar.
    WaveformBit find(const QString& name, Messages* messages) const;

private:
    struct Request;
    std::vector<int> candidates(Request& request) const;
    QString whyMissing(const Request& request, bool nearby) const;
    QStringList nearestNames(const std::string& leaf) const;
    bool endsWith(int variable, std::string_view end, bool& whole) const;
    QString shownName(int variable) const;

    const VcdReader& m_waveform;
    std::unordered_multimap<size_t, int> m_byHash; ///< the full name's hash, the variable
    std::unordered_multimap<std::string_view, int> m_byLeaf; ///< the last component, the variable
};

}

#endif
