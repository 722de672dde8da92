// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_WINDOW_PLACEMENT_H
#define OXACAPTURE_FILES_WINDOW_PLACEMENT_H

#include "oxacapture/files/capture_result.h"

#include <functional>

namespace OXA_CAPTURE {

/// Where the windows of a target are on one axis.
///
/// The windows of a core with stamps are at their true distances. A window that another core forced
/// is at its distance from that core's window. Nothing else is known: other windows follow those of
/// their core, apart by a sixteenth of the earlier one, and each core begins at 0.
class WindowPlacement {
public:
    /// The length of a number of samples of a core on the axis.
    using Length = std::function<qint64(const CapturedCore& core, double samples)>;

    /// `capture` has to outlive this. The lengths of different clocks are comparable when it
    /// `isTimed`.
    WindowPlacement(const Capture& capture, bool isTimed, Length length);

    qint64 start(size_t core, size_t window) const { return m_starts[core][window]; }
    /// The group of a window: the distances of those in one group are known.
    size_t group(size_t core, size_t window) const { return m_groups[nodeOf(core, window)]; }
    /// Whether there are others in its group.
    bool isJoined(size_t core, size_t window) const;
    /// Whether there are several windows, and all their distances are known.
    bool isWhole() const { return m_isWhole; }
    const CoreAlignment& alignment(size_t core) const { return m_alignments[core]; }

private:
    using Node = size_t; // a window, counted over all cores

    // A run of windows of a core in a group.
    struct Part {
        size_t core, first, count;
    };

    Node nodeOf(size_t core, size_t window) const { return m_firstNodes[core] + window; }
    void separate();
    void join(Node a, Node b, qint64 distance);
    void joinByStamps(size_t core);
    void align(size_t core);
    const CapturedCore* sourceOf(size_t core, QString& reason) const;
    bool place();
    std::vector<std::vector<Part>> partsOfGroups() const;
    void placeGroup(const std::vector<Part>& parts, std::vector<qint64>& free);

    const Capture& m_capture;
    bool m_isTimed;
    Length m_length;
    std::vector<Node> m_firstNodes; // by core
    std::vector<size_t> m_groups; // of the nodes
    std::vector<qint64> m_offsets; // of the nodes in their groups
    std::vector<std::vector<Node>> m_members; // of the groups
    std::vector<CoreAlignment> m_alignments; // by core
    std::vector<std::vector<qint64>> m_starts; // by core
    bool m_isWhole = false;
};

}

#endif
