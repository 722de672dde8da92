#ifndef NORVOSYN_SYNTHESIS_H
#define NORVOSYN_SYNTHESIS_H

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace NorvoSyn {

/// What a run asks and tells while it goes on, all from its own thread.
struct SynthesisHooks {
    std::function<bool()> stopAsked;
    std::function<void(const QString& stage, int percent)> progress; ///< never goes back
};

/// One synthesis from the request to the output file. False when it failed or was stopped: the
/// output file is then as it was. `messages` gets errors and warnings, in either case.
bool synthesize(const QVariantMap& request, const SynthesisHooks& hooks, QStringList& messages);

}

#endif
