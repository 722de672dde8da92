// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_SYNTHESIS_H
#define NORVOSYN_SYNTHESIS_H

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace NorvoSyn {

/// The hooks of a run, called in its thread.
struct SynthesisHooks {
    std::function<bool()> stopAsked;
    std::function<void(const QString& stage, int percent)> progress; ///< never decreases
};

/// One synthesis from the request to the output file. False when it failed or was stopped; the
/// output file is then unchanged. `messages` gets errors and warnings in both cases.
bool synthesize(const QVariantMap& request, const SynthesisHooks& hooks, QStringList& messages);

}

#endif
