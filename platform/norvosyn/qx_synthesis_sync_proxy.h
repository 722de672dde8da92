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

namespace NorvoSyn {

/// Runs one synthesis at a time in a process of its own (OXA_SYNTHESIS_ENGINE names the program).
///
/// A host replaces the engine by defining these functions itself; the class therefore has no
/// member (what it needs is a child object) and no virtual function of its own.
class OXANORVOSYN_EXPORT QxSynthesisSyncProxy : public QObject {
    Q_OBJECT

public:
    explicit QxSynthesisSyncProxy(QObject* parent);

    /// Synthesizes `request` (keys: request_keys.h) and blocks until that ended. 0 is success: the
    /// netlist stands in the request's output file. Anything else is a failure: the output file is
    /// as it was, and `messages` says why.
    int run(const QMap<QString, QVariant>& request);

    /// Ends a run within a second, from any thread. Asked before a run, that run does not start;
    /// asked after one, nothing happens.
    void tryToStop();

    /// The engine's errors and warnings of the last run, with file and line where it names them.
    QStringList messages() const;

Q_SIGNALS:
    /// From the thread of `run`: what is being done, and how far the whole is (0 to 100).
    void progress(const QString& stage, int percent);
};

}

#endif
