#include "engine_double.h"

#include <norvosyn/qx_synthesis_sync_proxy.h>

EngineDouble& EngineDouble::instance()
{
    static EngineDouble engine;
    return engine;
}

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
