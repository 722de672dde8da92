#include "proxy_state.h"

#include <QMutexLocker>

namespace NorvoSyn {

ProxyState::ProxyState(QObject* parent)
    : QObject(parent)
{
}

ProxyState::Start ProxyState::begin()
{
    const QMutexLocker lock(&m_mutex);
    switch (m_phase) {
    case Phase::Running:
    case Phase::Stopping:
        return Start::Busy;
    case Phase::StoppedEarly:
        m_phase = Phase::Ended;
        return Start::Stopped;
    case Phase::Fresh:
    case Phase::Ended:
        break;
    }
    m_phase = Phase::Running;
    m_messages.clear();
    return Start::Granted;
}

void ProxyState::end(const QStringList& messages)
{
    const QMutexLocker lock(&m_mutex);
    m_phase = Phase::Ended;
    m_messages = messages;
}

void ProxyState::askToStop()
{
    const QMutexLocker lock(&m_mutex);
    if (m_phase == Phase::Fresh)
        m_phase = Phase::StoppedEarly;
    else if (m_phase == Phase::Running)
        m_phase = Phase::Stopping;
}

bool ProxyState::stopAsked() const
{
    const QMutexLocker lock(&m_mutex);
    return m_phase == Phase::Stopping;
}

QStringList ProxyState::messages() const
{
    const QMutexLocker lock(&m_mutex);
    return m_messages;
}

}
