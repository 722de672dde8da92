#ifndef NORVOSYN_RUN_DIRECTORY_H
#define NORVOSYN_RUN_DIRECTORY_H

#include <QByteArray>
#include <QStringList>

namespace NorvoSyn {

/// Where one run's files are: the script and the log in the work directory, under the project's
/// name, and all else in a directory of the project beside them, in which the engine is started.
///
/// What an earlier run of the project left is replaced. The destructor removes the engine's
/// temporary files.
class RunDirectory {
public:
    RunDirectory(const QString& workDir, const QString& projectName);
    ~RunDirectory();
    Q_DISABLE_COPY(RunDirectory)

    /// The one of `sources` that `prepare` or the run would remove or overwrite; empty when there
    /// is none.
    QString lost(const QStringList& sources) const;

    /// Makes the directory with cells/ and flow/, and writes `script`. False when that is not
    /// possible: `error` says what.
    bool prepare(const QByteArray& script, QString* error);

    QString path() const; ///< the engine's directory
    QString scriptFromPath() const; ///< the script, seen from there
    QString logFile() const;
    QString netlist() const; ///< what the engine leaves when it succeeds
    QString usage() const; ///< the cells of the netlist, counted, as JSON

    /// The directory for the engine's own temporary files, seen from `path`.
    static QString temporaryName();

private:
    QString scriptFile() const;
    QString temporary() const;

    QString m_workDir;
    QString m_name;
};

}

#endif
