// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CORE_H
#define APPS_OXA_EDITOR_CORE_H

#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <QList>

#include <memory>

/// A core of either mode: exactly one of the pointers is set. Undo steps share it with the
/// document, so that undo restores a removed core as the same object.
struct Core {
    explicit Core(OXA::AoCore* core);
    explicit Core(OXA::AOCore_Lite* core);

    std::unique_ptr<OXA::AoCore> standard;
    std::unique_ptr<OXA::AOCore_Lite> lite;

    // Properties of both kinds.
    int& index() const;
    QString& sampleClock() const;
    int& trigType() const;
    int& implementation() const;
    int& captureAmount() const;
    bool& captureInitData() const;
    QList<OXA::SignalItem>& signalList() const;
    QString& moduleName() const;

    /// A copy with the same content.
    std::shared_ptr<Core> clone() const;

    /// Updates `captureSignals` from `signalList`, as reading the saved file would.
    void updateCaptured() const;
};

using CorePtr = std::shared_ptr<Core>;
using Cores = QList<CorePtr>;

// Those of one kind.
QList<OXA::AoCore*> standardCores(const Cores& cores);
QList<OXA::AOCore_Lite*> liteCores(const Cores& cores);

// The model's types have no operator==.
bool same(const OXA::SignalItem& a, const OXA::SignalItem& b);
bool same(const QList<OXA::SignalItem>& a, const QList<OXA::SignalItem>& b);
bool same(const OXA::MatchUnit& a, const OXA::MatchUnit& b);
template <typename T> bool same(const T& a, const T& b) { return a == b; }

#endif
