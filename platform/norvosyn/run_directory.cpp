// SPDX-License-Identifier: Apache-2.0
#include "run_directory.h"

#include "files/fail.h"
#include "files/input_guard.h"
#include "files/replace_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace NorvoSyn {
namespace {

constexpr char kResources[] = ":/norvosyn/";
constexpr const char* kShipped[] = {"cells", "flow"};
constexpr const char* kResults[] = {"netlist.v", "usage.json"};

bool copyResources(const QString& name, const QString& to, QString* error)
{
    const QDir from(kResources + name);
    if (!QDir().mkpath(to))
        return OXA::fail(error, QString("cannot create the directory %1").arg(to));
    const QStringList files = from.entryList(QDir::Files);
    for (const QString& file : files) {
        QFile resource(from.filePath(file));
        if (!resource.open(QIODevice::ReadOnly)
            || !OXA_FILES::writeFile(to + '/' + file, resource.readAll(), error))
            return false;
    }
    return !files.isEmpty();
}

}

RunDirectory::RunDirectory(const QString& workDir, const QString& projectName)
    : m_workDir(workDir)
    , m_name(projectName)
{
}

RunDirectory::~RunDirectory()
{
    if (!QFileInfo(path()).isSymLink())
        QDir(temporary()).removeRecursively();
}

QString RunDirectory::lost(const QStringList& sources) const
{
    const OXA_FILES::Inputs inputs {sources, {}};
    for (const QString& source :
        {OXA_FILES::lostByEmptying(path(), inputs), OXA_FILES::lostByWriting(scriptFile(), inputs),
            OXA_FILES::lostByWriting(logFile(), inputs)}) {
        if (!source.isEmpty())
            return source;
    }
    return {};
}

bool RunDirectory::prepare(const QByteArray& script, QString* error)
{
    if (QFileInfo(path()).isSymLink())
        return OXA::fail(
            error, QString("%1 is a link, which would redirect the engine's files").arg(path()));
    if (!QDir().mkpath(path()))
        return OXA::fail(error, QString("cannot create the directory %1").arg(path()));

    for (const char* result : kResults)
        QFile::remove(path() + '/' + result);
    QDir(temporary()).removeRecursively();
    if (!QDir().mkpath(temporary()))
        return OXA::fail(error, QString("cannot create the directory %1").arg(temporary()));
    for (const char* name : kShipped) {
        const QString to = path() + '/' + name;
        QDir(to).removeRecursively();
        if (!copyResources(name, to, error))
            return false;
    }
    return OXA_FILES::writeFile(scriptFile(), script, error);
}

QString RunDirectory::path() const { return QString("%1/%2_synthesis").arg(m_workDir, m_name); }

QString RunDirectory::scriptFile() const { return QString("%1/%2.tcl").arg(m_workDir, m_name); }

QString RunDirectory::scriptFromPath() const { return QString("../%1.tcl").arg(m_name); }

QString RunDirectory::logFile() const { return QString("%1/%2.log").arg(m_workDir, m_name); }

QString RunDirectory::netlist() const { return path() + "/netlist.v"; }

QString RunDirectory::usage() const { return path() + "/usage.json"; }

QString RunDirectory::temporary() const { return path() + '/' + temporaryName(); }

QString RunDirectory::temporaryName() { return "tmp"; }

}
