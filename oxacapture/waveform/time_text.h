// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_TIME_TEXT_H
#define OXACAPTURE_WAVEFORM_TIME_TEXT_H

#include <QList>
#include <QMap>
#include <QString>

namespace OXA_CAPTURE {

/// What the times in a file are.
enum class TimeKind {
    Waveform, ///< those of the waveform that the cores sampled
    Window, ///< since the first sample of each window, or of several at known distances
    Numbers, ///< the numbers of the samples: no time is known
};

constexpr int kNumbersExponent = -9; ///< of the time unit of `Numbers`, one that viewers can show

constexpr char kTimeTextStart[] = "oxa: "; ///< of each text of `timeText`

/// What a dump's times are, for people and for `readTimeText`, with the clocks of the cores in Hz,
/// by their indexes; of `Waveform`, those that tell the numbers of samples. When all distances
/// between windows are known, they are those of one run, which `readTimeText` takes as those of a
/// waveform.
QString timeText(TimeKind kind, const QMap<int, double>& clocks, bool isOfRun = false);

/// A core that another one has forced, whose windows are at a known distance.
struct AlignedCore {
    int core = 0; ///< index
    int source = 0; ///< index of the core that forced it
    double tolerance = 0; ///< of the distance, in seconds to both sides
};

/// What a dump says of such a core, for people and for `readAlignedCores`.
QString alignedText(const AlignedCore& aligned);

/// The cores of which `text` of a file says that.
QList<AlignedCore> readAlignedCores(const QString& text);

/// The kind of times that `text` of a file tells, and the clocks of the cores by their indexes.
TimeKind readTimeText(const QString& text, QMap<int, double>& clocks);

}

#endif
