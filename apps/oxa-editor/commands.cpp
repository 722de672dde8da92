// SPDX-License-Identifier: Apache-2.0
#include "commands.h"

namespace {

QList<int> forcedBy(const Core& core)
{
    return core.standard ? core.standard->events.forcedBy : QList<int>();
}

}

CoresCommand::CoresCommand(Cores& cores, const Cores& other, Notify notify)
    : m_cores(cores)
    , m_other(other)
    , m_notify(std::move(notify))
{
    for (const CorePtr& core : qAsConst(m_cores))
        m_before += {core->index(), forcedBy(*core)};
    for (int i = 0; i < m_other.size(); ++i)
        m_after += {i, renumbered(forcedBy(*m_other.at(i)))};
}

/// The positions after the change of the cores that `indexes` name before it.
QList<int> CoresCommand::renumbered(const QList<int>& indexes) const
{
    QList<int> positions;
    for (int i = 0; i < m_other.size(); ++i) {
        const CorePtr& core = m_other.at(i);
        if (m_cores.contains(core) && indexes.contains(core->index()))
            positions += i;
    }
    return positions;
}

void CoresCommand::redo() { swap(m_after); }

void CoresCommand::undo() { swap(m_before); }

void CoresCommand::swap(const QList<Numbers>& numbers)
{
    m_cores.swap(m_other);
    for (int i = 0; i < m_cores.size(); ++i) {
        const CorePtr& core = m_cores.at(i);
        core->index() = numbers.at(i).index;
        if (core->standard)
            core->standard->events.forcedBy = numbers.at(i).forcedBy;
    }
    m_notify({});
}
