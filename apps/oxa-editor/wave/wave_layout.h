// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_LAYOUT_H
#define APPS_OXA_EDITOR_WAVE_WAVE_LAYOUT_H

#include "waveform.h"

#include <QJsonArray>
#include <QSet>

#include <optional>

/// How the values of a bus are drawn: as digits, or as a curve.
enum class WaveShape { Digits, Steps, Lines };

constexpr int kWaveShapes = 3;
constexpr int kHighestRow = 16; ///< in lines of text

QString shapeName(WaveShape shape); ///< for the user

int newEntryId(); ///< another one at each call

/// A row of the view, and how the user wants it.
struct WaveEntry {
    enum Kind { Signal, Event, Group, Divider };

    int id = newEntryId(); ///< of this and its copies; not in files
    Kind kind = Signal;
    QString name; ///< of the signal or event, or as the user named the group or divider
    int color = 0; ///< 0: the usual one, else of `rowColorName`
    int height = 1; ///< lines of text, to `kHighestRow`
    WaveShape shape = WaveShape::Digits;
    std::optional<Radix> radix {}; ///< without: the usual one
    bool hidden = false;
    bool expanded = false; ///< the bits, or the rows of the group, are visible
    std::vector<WaveEntry> rows {}; ///< of a group: anything but groups

    bool isWave() const { return kind == Signal || kind == Event; }
};

bool operator==(const WaveEntry& a, const WaveEntry& b);

using WaveEntries = std::vector<WaveEntry>; ///< from top to bottom

/// Adds entries for the rows of `waveform` that have none, each behind its predecessor in the
/// waveform.
void addMissing(WaveEntries& entries, const Waveform& waveform);

/// Where rows are put: in `group`, or in none; before the row `before` there, or at the end.
struct WavePlace {
    const WaveEntry* group = nullptr;
    const WaveEntry* before = nullptr;
};

/// `entries`, with those of `chosen` moved to `place` in the same order. Groups stay out of groups.
WaveEntries moved(
    const WaveEntries& entries, const QSet<const WaveEntry*>& chosen, const WavePlace& place);

/// `entries`, with `entry` put in `place`.
WaveEntries inserted(const WaveEntries& entries, const WaveEntry& entry, const WavePlace& place);

/// `entries`, with those of `chosen` that are no groups as the rows of `group`, which is put where
/// the first of them was.
WaveEntries grouped(
    const WaveEntries& entries, const QSet<const WaveEntry*>& chosen, WaveEntry group);

/// `entries` without those of `chosen`; the rows of a group take its place.
WaveEntries removed(const WaveEntries& entries, const QSet<const WaveEntry*>& chosen);

/// Rows as in the file of layouts (docs: editor).
QJsonArray toJson(const WaveEntries& entries);

/// Reads them; what is not understood has its usual value.
WaveEntries waveEntriesFrom(const QJsonArray& array);

#endif
