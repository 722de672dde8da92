// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_RUN_DIRECTORY_H
#define NORVOSYN_RUN_DIRECTORY_H

#include <QByteArray>
#include <QStringList>

namespace NorvoSyn {

/// The files of one run: the script and the log in the work directory, named after the project, and
/// all others in a directory of the project beside them, where the engine runs.
///
/// Replaces the files of an earlier run of the project. The destructor removes the engine's
/// temporary files.
class RunDirectory {
public:
    RunDirectory(const QString& workDir, const QString& projectName);
    ~RunDirectory();
    Q_DISABLE_COPY(RunDirectory)

    /// The first of `sources` that `prepare` or the run would remove or overwrite; empty when there
    /// is none.
    QString lost(const QStringList& sources) const;

    /// Creates the directory with cells/ and flow/, and writes `script`. False, with the reason in
    /// `error`, on failure.
    bool prepare(const QByteArray& script, QString* error);

    QString path() const; ///< the engine's directory
    QString scriptFromPath() const; ///< the script, relative to that directory
    QString logFile() const;
    QString netlist() const; ///< written by the engine on success
    QString usage() const; ///< counts of the netlist's cells, as JSON

    /// The directory for the engine's temporary files, relative to `path`.
    static QString temporaryName();

private:
    QString scriptFile() const;
    QString temporary() const;

    QString m_workDir;
    QString m_name;
};

}

#endif
