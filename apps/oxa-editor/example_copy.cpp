// SPDX-License-Identifier: Apache-2.0
#include "example_copy.h"

#include "files/fail.h"

#include "oxautils/design/design_sources.h"
#include "oxautils/generate/installed.h"

#include <QDir>
#include <QFile>

namespace {

constexpr char kConfiguration[] = "uart.oxa";
constexpr char kSource[] = "uart_tx.v";

QString tr(const char* text) { return QCoreApplication::translate("ExampleCopy", text); }

bool copyMissing(const QString& from, const QString& to, QString* error)
{
    if (QFile::exists(to))
        return true;
    QFile source(from);
    if (!source.copy(to))
        return OXA::fail(error, tr("%1: %2").arg(to, source.errorString()));
    QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner);
    return true;
}

}

bool copyExample(const QString& directory, QString& configuration, QString* error)
{
    const QDir from(OXA::installed("share/doc/oxautils/examples/uart"));
    const QDir to(directory + "/uart");
    configuration = to.filePath(kConfiguration);
    if (!from.exists(kConfiguration))
        return OXA::fail(error, tr("The example is not installed in %1.").arg(from.path()));
    if (!QDir().mkpath(to.path()))
        return OXA::fail(error, tr("%1: the directory cannot be created").arg(to.path()));
    for (const QString& name : from.entryList(QDir::Files)) {
        if (!copyMissing(from.filePath(name), to.filePath(name), error))
            return false;
    }
    OXA::DesignSources sources;
    sources.files += to.filePath(kSource);
    return QFile::exists(OXA::designListOf(configuration))
        || OXA::rememberDesign(configuration, sources, error);
}
