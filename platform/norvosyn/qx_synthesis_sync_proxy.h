// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_QX_SYNTHESIS_SYNC_PROXY_H
#define NORVOSYN_QX_SYNTHESIS_SYNC_PROXY_H

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#ifdef OXANORVOSYN_LIBRARY
#define OXANORVOSYN_EXPORT Q_DECL_EXPORT
#else
#define OXANORVOSYN_EXPORT Q_DECL_IMPORT
#endif

/// The synthesis engine, which a host can replace.
namespace NorvoSyn {

/// Runs one synthesis at a time in a separate process (OXA_SYNTHESIS_ENGINE names the program).
///
/// A host can replace the engine by defining these functions itself; so the class has no members
/// (its state is a child object) and no virtual functions of its own.
class OXANORVOSYN_EXPORT QxSynthesisSyncProxy : public QObject {
    Q_OBJECT

public:
    explicit QxSynthesisSyncProxy(QObject* parent); ///< `parent`, if any, owns it

    /// Synthesizes `request` (keys: request_keys.h), and blocks until it has ended. 0: success, the
    /// netlist is in the request's output file. Other values: failure, the output file is
    /// unchanged, and `messages` has the reasons.
    int run(const QMap<QString, QVariant>& request);

    /// Ends a run within a second, from any thread. Called before the first run, it refuses that
    /// run; after a run it does nothing.
    void tryToStop();

    /// The engine's errors and warnings of the last run, with file and line when it reports them.
    QStringList messages() const;

Q_SIGNALS:
    /// In the thread of `run`: the current stage, and the progress of the run (0 to 100).
    void progress(const QString& stage, int percent);
};

}

#endif
