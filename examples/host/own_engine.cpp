// SPDX-License-Identifier: Apache-2.0
// Replaces the installed engine: a host starts its own synthesis here. This one only prints the
// request.
#include <norvosyn/qx_synthesis_sync_proxy.h>
#include <norvosyn/request_keys.h>

#include <QTextStream>

namespace NorvoSyn {

QxSynthesisSyncProxy::QxSynthesisSyncProxy(QObject* parent)
    : QObject(parent)
{
}

int QxSynthesisSyncProxy::run(const QMap<QString, QVariant>& request)
{
    QTextStream out(stdout);
    out << request.value(PROJECT_NAME).toString() << '\n';
    const QVariantList files = request.value(ARG_FILE).toList();
    for (const QVariant& file : files)
        out << file.toMap().value(ARG_FILE_PATH).toString() << '\n';
    return 0;
}

void QxSynthesisSyncProxy::tryToStop() { }

QStringList QxSynthesisSyncProxy::messages() const { return {}; }

}
