#include "design_model.h"

#include "oxa-editor/signal_clipboard.h"

#include "oxautils/design/choose_signals.h"
#include "oxautils/model/shown_text.h"

#include <QMimeData>

#include <algorithm>

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

QList<SignalItem> DesignModel::items(const QModelIndexList& indexes) const
{
    QVector<int> chosen;
    for (const QModelIndex& index : indexes) {
        const DesignSignal* signal = signalAt(index);
        if (signal && index.column() == NameColumn && canBeWatched(*signal))
            chosen += node(nodeAt(index)).signal;
    }
    std::sort(chosen.begin(), chosen.end());
    QList<SignalItem> items;
    for (const int signal : qAsConst(chosen))
        items += wholeSignal(m_tree->design().items.at(signal));
    return items;
}

QModelIndex DesignModel::indexOf(int node) const
{
    if (node <= 0 || size_t(node) >= m_rows.size() || m_rows[size_t(node)] < 0)
        return {};
    return createIndex(m_rows[size_t(node)], NameColumn, quintptr(node));
}

QModelIndex DesignModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, quintptr(m_children[parent.internalId()].at(row)));
}

QModelIndex DesignModel::parent(const QModelIndex& index) const
{
    return index.isValid() ? indexOf(node(nodeAt(index)).parent) : QModelIndex();
}

int DesignModel::rowCount(const QModelIndex& parent) const
{
    // An invalid index has the root's number.
    if (!m_tree || parent.column() > 0)
        return 0;
    return m_children[parent.internalId()].size();
}

int DesignModel::columnCount(const QModelIndex&) const { return Columns; }

Qt::ItemFlags DesignModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const DesignSignal* signal = signalAt(index);
    if (!signal)
        return Qt::ItemIsEnabled;
    return canBeWatched(*signal) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled
            | Qt::ItemNeverHasChildren
                                 : Qt::ItemNeverHasChildren;
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
