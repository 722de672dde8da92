// SPDX-License-Identifier: Apache-2.0
#include "qx_synthesis_sync_proxy.h"

#include "proxy_state.h"
#include "synthesis.h"

#include <algorithm>

namespace NorvoSyn {
namespace {

ProxyState* stateOf(const QObject* proxy)
{
    return proxy->findChild<ProxyState*>(QString(), Qt::FindDirectChildrenOnly);
}

}

QxSynthesisSyncProxy::QxSynthesisSyncProxy(QObject* parent)
    : QObject(parent)
{
    new ProxyState(this);
}

int QxSynthesisSyncProxy::run(const QMap<QString, QVariant>& request)
{
    ProxyState* state = stateOf(this);
    switch (state->begin()) {
    case ProxyState::Start::Granted:
        break;
    case ProxyState::Start::Stopped:
        state->end({"the synthesis was stopped before it began"});
        return 1;
    case ProxyState::Start::Busy:
        return 1; // the messages belong to the current run
    }

    int reached = 0;
    const SynthesisHooks hooks {
        [&] { return state->stopAsked(); },
        [&](const QString& stage, int percent) {
            reached = std::clamp(percent, reached, 100);
            Q_EMIT progress(stage, reached);
        },
    };
    QStringList messages;
    const bool done = synthesize(request, hooks, messages);
    state->end(messages);
    if (done)
        Q_EMIT progress("done", 100);
    return done ? 0 : 1;
}

void QxSynthesisSyncProxy::tryToStop() { stateOf(this)->askToStop(); }

QStringList QxSynthesisSyncProxy::messages() const { return stateOf(this)->messages(); }

}
