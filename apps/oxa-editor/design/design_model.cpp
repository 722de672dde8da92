// SPDX-License-Identifier: Apache-2.0
#include "design_model.h"

#include "oxa-editor/signal_clipboard.h"

#include "oxautils/design/choose_signals.h"
#include "oxautils/model/shown_text.h"

#include <QMimeData>

#include <algorithm>
#include <tuple>

using namespace OXA;

namespace {

constexpr int kShownStates = 24; // of an enumeration

QString tipOf(const DesignSignal& signal)
{
    QStringList lines {shownText(signal.path) + signal.rangeText()};
    if (signal.isMemory())
        lines += DesignModel::tr("A memory cannot be watched; the signals at its ports can.");
    else if (!canBeWatched(signal))
        lines += DesignModel::tr("A configuration file cannot contain this name.");
    for (const auto& state : signal.states.mid(0, kShownStates))
        lines += state.first + " = " + shownText(state.second);
    if (signal.states.size() > kShownStates)
        lines += DesignModel::tr("and %1 more").arg(signal.states.size() - kShownStates);
    if (!signal.file.isEmpty())
        lines += QString("%1:%2").arg(shownText(signal.file), QString::number(signal.line));
    for (QString& line : lines) // names may contain markup
        line = line.toHtmlEscaped();
    return "<qt>" + lines.join("<br>") + "</qt>";
}

}

DesignModel::DesignModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

void DesignModel::setTree(const std::shared_ptr<const DesignTree>& tree)
{
    beginResetModel();
    m_tree = tree;
    m_filter.clear();
    m_found = m_tree ? m_tree->matching({}) : QVector<int>();
    showFound();
    endResetModel();
}

bool DesignModel::setFilter(const QString& filter)
{
    if (!m_tree)
        return false;
    const QVector<int> found = m_tree->matching(filter, m_filter, m_found);
    m_filter = filter;
    if (found == m_found)
        return false;
    beginResetModel();
    m_found = found;
    showFound();
    endResetModel();
    return true;
}

void DesignModel::showFound()
{
    const size_t count = m_tree ? m_tree->nodes().size() : 0;
    m_rows.assign(count, -1);
    m_children.assign(count, {});
    for (const int signal : qAsConst(m_found)) {
        for (int i = m_tree->nodeOf(signal); i > 0 && m_rows[size_t(i)] < 0; i = node(i).parent)
            m_rows[size_t(i)] = 0;
    }
    for (size_t i = 0; i < count; ++i) {
        QVector<int>& shown = m_children[i];
        for (const int child : node(int(i)).children) {
            if (m_rows[size_t(child)] < 0)
                continue;
            m_rows[size_t(child)] = shown.size();
            shown += child;
        }
    }
}

const DesignSignal* DesignModel::signalAt(const QModelIndex& index) const
{
    const int signal = index.isValid() ? node(nodeAt(index)).signal : -1;
    return signal < 0 ? nullptr : &m_tree->design().items.at(signal);
}

bool DesignModel::isOneBit(const QModelIndex& index) const
{
    const DesignSignal* signal = signalAt(index);
    return signal && (signal->width == 1 || positionAt(index) >= 0);
}

// Rows of bits have the number of their signal's node, and behind that, in steps of the number of
// all nodes, their position from 1.
int DesignModel::nodeAt(const QModelIndex& index) const
{
    return int(index.internalId() % m_rows.size());
}

/// The position of a bit; -1 for other rows.
int DesignModel::positionAt(const QModelIndex& index) const
{
    return int(index.internalId() / m_rows.size()) - 1;
}

QList<SignalItem> DesignModel::items(const QModelIndexList& indexes) const
{
    struct Part {
        int signal, high, low;
    };
    std::vector<Part> parts;
    for (const QModelIndex& index : indexes) {
        const DesignSignal* signal = signalAt(index);
        if (!signal || index.column() != NameColumn || !canBeWatched(*signal))
            continue;
        const int position = positionAt(index);
        parts.push_back({node(nodeAt(index)).signal, position < 0 ? signal->width - 1 : position,
            qMax(position, 0)});
    }
    std::sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) {
        return std::tie(a.signal, b.high, a.low) < std::tie(b.signal, a.high, b.low);
    });
    QList<SignalItem> items;
    for (size_t i = 0; i < parts.size();) {
        Part part = parts[i++];
        for (; i < parts.size() && parts[i].signal == part.signal && parts[i].high >= part.low - 1;
             ++i)
            part.low = qMin(part.low, parts[i].low);
        items += partOfSignal(m_tree->design().items.at(part.signal), part.high, part.low);
    }
    return items;
}

QModelIndex DesignModel::indexOf(int node) const
{
    if (node <= 0 || size_t(node) >= m_rows.size() || m_rows[size_t(node)] < 0)
        return {};
    return createIndex(m_rows[size_t(node)], NameColumn, quintptr(node));
}

QModelIndexList DesignModel::scopes() const
{
    QModelIndexList scopes;
    for (int i = 1; i < int(m_rows.size()); ++i) {
        if (node(i).signal < 0 && m_rows[size_t(i)] >= 0)
            scopes += indexOf(i);
    }
    return scopes;
}

QModelIndex DesignModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    const DesignSignal* signal = signalAt(parent);
    if (!signal)
        return createIndex(row, column, quintptr(m_children[parent.internalId()].at(row)));
    return createIndex(
        row, column, parent.internalId() + quintptr(signal->width - row) * m_rows.size());
}

QModelIndex DesignModel::parent(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    return indexOf(positionAt(index) < 0 ? node(nodeAt(index)).parent : nodeAt(index));
}

int DesignModel::rowCount(const QModelIndex& parent) const
{
    if (!m_tree || parent.column() > 0)
        return 0;
    const DesignSignal* signal = signalAt(parent);
    if (!signal) // an invalid index has the root's number
        return m_children[parent.internalId()].size();
    return isOneBit(parent) || !canBeWatched(*signal) ? 0 : signal->width;
}

int DesignModel::columnCount(const QModelIndex&) const { return Columns; }

Qt::ItemFlags DesignModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const DesignSignal* signal = signalAt(index);
    if (!signal)
        return Qt::ItemIsEnabled;
    const Qt::ItemFlags flags
        = canBeWatched(*signal) && !isOneBit(index) ? Qt::NoItemFlags : Qt::ItemNeverHasChildren;
    return canBeWatched(*signal)
        ? flags | Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled
        : flags;
}

QString DesignModel::text(const DesignSignal& signal, int column) const
{
    switch (column) {
    case RangeColumn:
        return signal.isMemory()
            ? tr("%1 × %2").arg(QString::number(signal.memoryWords), signal.rangeText())
            : signal.rangeText();
    case KindColumn:
        return m_tree->design().isWaveform ? QString() : signal.kindText();
    case ClockColumn:
        return signal.isRegister() ? shownText(m_tree->design().clockText(signal)) : QString();
    default:
        return {};
    }
}

QVariant DesignModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const DesignSignal* signal = signalAt(index);
    const int position = positionAt(index);
    if (role == Qt::DisplayRole && position >= 0)
        return index.column() == NameColumn
            ? shownText(node(nodeAt(index)).name) + QString("[%1]").arg(signal->indexAt(position))
            : QVariant();
    if (role == Qt::DisplayRole && index.column() == NameColumn)
        return shownText(node(nodeAt(index)).name);
    if (role == Qt::DisplayRole && signal)
        return text(*signal, index.column());
    if (role == Qt::ToolTipRole && signal)
        return tipOf(*signal);
    return {};
}

QVariant DesignModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Signal");
    case RangeColumn:
        return tr("Range");
    case KindColumn:
        return tr("Kind");
    default:
        return tr("Clock");
    }
}

QStringList DesignModel::mimeTypes() const { return {kSignalsType}; }

QMimeData* DesignModel::mimeData(const QModelIndexList& indexes) const
{
    return toMimeData(items(indexes));
}
