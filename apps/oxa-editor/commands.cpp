// SPDX-License-Identifier: Apache-2.0
#include "commands.h"

CoresCommand::CoresCommand(Cores& cores, const Cores& other, Notify notify)
    : m_cores(cores)
    , m_other(other)
    , m_notify(std::move(notify))
{
    for (const CorePtr& core : qAsConst(m_cores))
        m_indexesBefore += core->index();
    for (int i = 0; i < m_other.size(); ++i)
        m_indexesAfter += i;
}

void CoresCommand::redo() { swap(m_indexesAfter); }

void CoresCommand::undo() { swap(m_indexesBefore); }

void CoresCommand::swap(const QList<int>& indexes)
{
    m_cores.swap(m_other);
    for (int i = 0; i < m_cores.size(); ++i)
        m_cores.at(i)->index() = indexes.at(i);
    m_notify({});
}
