#include "run_directory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace NorvoSyn {
namespace {

constexpr char kResources[] = ":/norvosyn/";
constexpr const char* kShipped[] = {"cells", "flow"};
constexpr const char* kResults[] = {"netlist.v", "usage.json"};

bool copyResources(const QString& name, const QString& to)
{
    if (!QDir().mkpath(to))
        return false;
    const QDir from(kResources + name);
    const QStringList files = from.entryList(QDir::Files);
    for (const QString& file : files) {
        const QString copy = to + '/' + file;
        // A resource is read-only, and so would its copy be.
        if (!QFile::copy(from.filePath(file), copy)
            || !QFile::setPermissions(
                copy, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther))
            return false;
    }
    return !files.isEmpty();
}

bool writeFile(const QString& path, const QByteArray& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size()
        && file.flush();
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

bool RunDirectory::prepare(const QByteArray& script, QString& problem)
{
    const auto refuse = [&](const QString& why) {
        problem = why;
        return false;
    };
    if (QFileInfo(path()).isSymLink())
        return refuse(QString("%1 is a link; the engine's files would go elsewhere").arg(path()));
    if (!QDir().mkpath(path()))
        return refuse(QString("cannot make the directory %1").arg(path()));

    for (const char* result : kResults)
        QFile::remove(path() + '/' + result);
    QDir(temporary()).removeRecursively();
    if (!QDir().mkpath(temporary()))
        return refuse(QString("cannot make the directory %1").arg(temporary()));
    for (const char* name : kShipped) {
        const QString to = path() + '/' + name;
        QDir(to).removeRecursively();
        if (!copyResources(name, to))
            return refuse(QString("cannot write into %1").arg(to));
    }
    const QString scriptFile = QString("%1/%2.tcl").arg(m_workDir, m_name);
    return writeFile(scriptFile, script) || refuse(QString("cannot write %1").arg(scriptFile));
}

QString RunDirectory::path() const { return QString("%1/%2_synthesis").arg(m_workDir, m_name); }

QString RunDirectory::scriptFromPath() const { return QString("../%1.tcl").arg(m_name); }

QString RunDirectory::logFile() const { return QString("%1/%2.log").arg(m_workDir, m_name); }

QString RunDirectory::netlist() const { return path() + "/netlist.v"; }

QString RunDirectory::usage() const { return path() + "/usage.json"; }

QString RunDirectory::temporary() const { return path() + '/' + temporaryName(); }

QString RunDirectory::temporaryName() { return "tmp"; }

}
