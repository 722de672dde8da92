// SPDX-License-Identifier: Apache-2.0
#include "oxautils/editor/match_unit_model.h"

#include "oxautils/model/match_unit.h"
#include "oxautils/model/trigger_port.h"

#include <QColor>

namespace OXA {

namespace {

constexpr int kConstructorRows = 10;

enum Column : int {
    ColEnable,
    ColIndex,
    ColTrigger,
    ColType,
    ColFunc,
    ColCounter,
    ColValue,
    ColumnCount,
};

// In the order of Column.
constexpr const char* kHeaders[ColumnCount] = {
    QT_TRANSLATE_NOOP("OXA::MatchUnitModel", "Match Unit"),
    QT_TRANSLATE_NOOP("OXA::MatchUnitModel", "Match Unit"),
    QT_TRANSLATE_NOOP("OXA::MatchUnitModel", "Trigger Port"),
    QT_TRANSLATE_NOOP("OXA::MatchUnitModel", "Match Type"),
    QT_TRANSLATE_NOOP("OXA::MatchUnitModel", "Function"),
    QT_TRANSLATE_NOOP("OXA::MatchUnitModel", "Counter"),
    QT_TRANSLATE_NOOP("OXA::MatchUnitModel", "Value"),
};

/// The roles that are the same in all columns.
QVariant cell(const MatchUnit& unit, int role, const QString& text)
{
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::ForegroundRole:
        return unit.enabled ? QVariant() : QColor(Qt::gray);
    default:
        return {};
    }
}

}

MatchUnitModel::MatchUnitModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

MatchUnitModel::MatchUnitModel(const QList<MatchUnit*>& list, QObject* parent)
    : QAbstractTableModel(parent)
    , m_units(list.mid(0, kConstructorRows))
{
}

void MatchUnitModel::setMatcherList(const QList<MatchUnit*>& list)
{
    beginResetModel();
    if (m_units != list)
        m_units = list;
    endResetModel();
}

void MatchUnitModel::reset()
{
    beginResetModel();
    m_units.clear();
    endResetModel();
}

void MatchUnitModel::updateRow(int row)
{
    if (row >= 0 && row < m_units.size())
        Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

MatchUnit* MatchUnitModel::muFromIndex(const QModelIndex& index)
{
    return static_cast<MatchUnit*>(index.internalPointer());
}

QModelIndex MatchUnitModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column, m_units.at(row))
                                         : QModelIndex();
}

int MatchUnitModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_units.size();
}

int MatchUnitModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

Qt::ItemFlags MatchUnitModel::flags(const QModelIndex& index) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return index.column() == ColEnable ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant MatchUnitModel::data(const QModelIndex& index, int role) const
{
    using Routine = QVariant (MatchUnitModel::*)(int row, int role) const;
    static constexpr Routine routines[ColumnCount] = {
        &MatchUnitModel::dataForColEnable,
        &MatchUnitModel::dataForColIndex,
        &MatchUnitModel::dataForColTrigger,
        &MatchUnitModel::dataForColType,
        &MatchUnitModel::dataForColFunc,
        &MatchUnitModel::dataForCounter,
        &MatchUnitModel::dataForColValue,
    };
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return (this->*routines[index.column()])(index.row(), role);
}

QVariant MatchUnitModel::dataForColEnable(int row, int role) const
{
    if (role == Qt::CheckStateRole)
        return int(m_units.at(row)->enabled ? Qt::Checked : Qt::Unchecked);
    return dataForColIndex(row, role);
}

QVariant MatchUnitModel::dataForColIndex(int row, int role) const
{
    const MatchUnit& unit = *m_units.at(row);
    return cell(unit, role, QString("M%1").arg(unit.index));
}

QVariant MatchUnitModel::dataForColTrigger(int row, int role) const
{
    const MatchUnit& unit = *m_units.at(row);
    return cell(unit, role, unit.trigger ? tr("Trigger %1").arg(unit.trigger->index) : tr("NONE"));
}

QVariant MatchUnitModel::dataForColType(int row, int role) const
{
    const MatchUnit& unit = *m_units.at(row);
    return cell(unit, role, type2string(unit.matchType));
}

QVariant MatchUnitModel::dataForColFunc(int row, int role) const
{
    const MatchUnit& unit = *m_units.at(row);
    return cell(unit, role, func2string(unit.matchFunc));
}

QVariant MatchUnitModel::dataForCounter(int row, int role) const
{
    const MatchUnit& unit = *m_units.at(row);
    return cell(unit, role, unit.counterEnable ? QString::number(unit.counter) : tr("Disabled"));
}

QVariant MatchUnitModel::dataForColValue(int row, int role) const
{
    const MatchUnit& unit = *m_units.at(row);
    return cell(unit, role,
        isRangeFunction(unit.matchFunc) ? QString("%1 : %2").arg(unit.value0, unit.value1)
                                        : unit.value0);
}

QVariant MatchUnitModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical)
        return QString::number(section);
    return section >= 0 && section < ColumnCount ? tr(kHeaders[section]) : QVariant();
}

bool MatchUnitModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || index.column() != ColEnable
        || role != Qt::CheckStateRole)
        return false;
    m_units.at(index.row())->enabled = value.toBool();
    updateRow(index.row());
    Q_EMIT matchChange();
    Q_EMIT modified();
    return true;
}

}
