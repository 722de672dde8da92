// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_GENERATE_ENGINE_DOUBLE_H
#define TESTS_GENERATE_ENGINE_DOUBLE_H

#include <norvosyn/qx_synthesis_sync_proxy.h>

#include <QList>
#include <QMap>
#include <QStringList>
#include <QVariant>

#include <functional>

/// Replaces the installed engine: the library's requests, and the answers. For programs with one
/// source that includes this.
struct EngineDouble {
    QList<QMap<QString, QVariant>> requests;
    int result = 0; ///< of the next runs
    QStringList messages;
    int stops = 0;
    std::function<void()> onRun; ///< called while a run goes on

    static EngineDouble& instance()
    {
        static EngineDouble engine;
        return engine;
    }
};

namespace NorvoSyn {

QxSynthesisSyncProxy::QxSynthesisSyncProxy(QObject* parent)
    : QObject(parent)
{
}

int QxSynthesisSyncProxy::run(const QMap<QString, QVariant>& request)
{
    EngineDouble::instance().requests += request;
    if (EngineDouble::instance().onRun)
        EngineDouble::instance().onRun();
    return EngineDouble::instance().result;
}

void QxSynthesisSyncProxy::tryToStop() { ++EngineDouble::instance().stops; }

QStringList QxSynthesisSyncProxy::messages() const { return EngineDouble::instance().messages; }

}

#endif
