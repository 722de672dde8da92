#include "qx_synthesis_sync_proxy.h"

namespace NorvoSyn {

QxSynthesisSyncProxy::QxSynthesisSyncProxy(QObject* parent)
    : QObject(parent)
{
}

int QxSynthesisSyncProxy::run(const QMap<QString, QVariant>&) { return 1; }

void QxSynthesisSyncProxy::tryToStop() { }

QStringList QxSynthesisSyncProxy::messages() const { return {}; }

}
