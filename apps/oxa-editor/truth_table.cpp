// SPDX-License-Identifier: Apache-2.0
#include "truth_table.h"

#include "oxacapture/trigger/trigger_table.h"

#include "oxautils/encoding/expression_tokens.h"

#include <QFont>

namespace {

constexpr int kMostUnits = 6;

}

void TruthTable::setExpression(const QString& text, const OXA::AoCore& core)
{
    beginResetModel();
    m_results.clear();
    m_reason.clear();
    m_units = OXA::namedUnits(OXA::tokensOf(text));
    compute(text, core);
    if (!m_reason.isEmpty())
        m_units.clear();
    endResetModel();
}

void TruthTable::compute(const QString& text, const OXA::AoCore& core)
{
    OXA_CAPTURE::TriggerTable table;
    if (!OXA_CAPTURE::triggerTable(core, text, table, &m_reason))
        return;
    if (m_units.size() > kMostUnits) {
        m_reason = tr("The table is shown for up to %1 units.").arg(kMostUnits);
        return;
    }
    for (quint32 row = 0; row < quint32(1) << m_units.size(); ++row) {
        quint32 outputs = 0;
        for (int i = 0; i < m_units.size(); ++i)
            outputs |= (row >> (m_units.size() - 1 - i) & 1) << m_units.at(i);
        m_results.push_back(table.at(outputs));
    }
}

int TruthTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_results.size());
}

int TruthTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || m_results.empty() ? 0 : m_units.size() + 1;
}

QVariant TruthTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const bool result = index.column() == m_units.size();
    const bool isTrue = m_results.at(size_t(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        if (result)
            return isTrue ? "1" : "0";
        return QString::number(index.row() >> (m_units.size() - 1 - index.column()) & 1);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::FontRole:
        if (result && isTrue) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    default:
        return {};
    }
}

QVariant TruthTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section;
    return section < m_units.size() ? QString("M%1").arg(m_units.at(section)) : tr("Trigger");
}
