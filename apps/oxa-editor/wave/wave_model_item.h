// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_MODEL_ITEM_H
#define APPS_OXA_EDITOR_WAVE_WAVE_MODEL_ITEM_H

#include "wave_model.h"

#include <tuple>

/// A row of the tree.
struct WaveModel::Item {
    WaveEntry* entry = nullptr; // of a bit: of its bus
    const WaveRow* row = nullptr; // null: a group or a divider
    Item* parent = nullptr;
    int place = 0; // in the parent
    QHash<QString, QString> states {}; // the names of its values, by binary digits
    std::vector<std::unique_ptr<Item>> items {};

    bool isBit() const { return parent && parent->entry == entry; }

    /// Identifies the row in another layout and waveform.
    std::tuple<int, QString, int> key() const
    {
        return {entry->kind, entry->isWave() ? entry->name : QString::number(entry->id),
            isBit() ? place : -1};
    }

    Item* add(Item child)
    {
        child.parent = this;
        child.place = int(items.size());
        items.push_back(std::make_unique<Item>(std::move(child)));
        return items.back().get();
    }
};

#endif
