// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_PROXY_STATE_H
#define NORVOSYN_PROXY_STATE_H

#include <QObject>
#include <QStringList>

#include <mutex>

namespace NorvoSyn {

/// The state of a proxy: whether it runs, whether it is to stop, and the messages of the last run.
/// A child of the proxy, which has no members; thread-safe.
class ProxyState : public QObject {
    Q_OBJECT

public:
    explicit ProxyState(QObject* parent);

    enum class Start : int { Granted, Stopped, Busy };

    /// Requests the next run. A stop requested before the first run refuses it, once.
    Start begin();
    void end(const QStringList& messages);

    void askToStop();
    bool stopAsked() const;
    QStringList messages() const;

private:
    enum class Phase : int { Fresh, StoppedEarly, Running, Stopping, Ended };

    mutable std::mutex m_mutex;
    Phase m_phase = Phase::Fresh;
    QStringList m_messages;
};

}

#endif
