// SPDX-License-Identifier: Apache-2.0
#include "proxy_state.h"

namespace NorvoSyn {

ProxyState::ProxyState(QObject* parent)
    : QObject(parent)
{
}

ProxyState::Start ProxyState::begin()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
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
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_phase = Phase::Ended;
    m_messages = messages;
}

void ProxyState::askToStop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_phase == Phase::Fresh)
        m_phase = Phase::StoppedEarly;
    else if (m_phase == Phase::Running)
        m_phase = Phase::Stopping;
}

bool ProxyState::stopAsked() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_phase == Phase::Stopping;
}

QStringList ProxyState::messages() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_messages;
}

}
