// SPDX-License-Identifier: Apache-2.0
#include "wave_row_menu.h"

#include <QActionGroup>
#include <QIcon>
#include <QPixmap>
#include <QTreeView>

#include <algorithm>

namespace {

constexpr int kHeights[] = {1, 2, 4, 8, kHighestRow}; // lines
constexpr int kCurveHeight = 4; // of a row that becomes a curve
constexpr int kSwatch = 12; // pixels

QIcon colorIcon(int color, const QPalette& palette)
{
    QPixmap icon(kSwatch, kSwatch);
    icon.fill(waveColors(palette).rows[color - 1]);
    return icon;
}

}

WaveRowMenu::WaveRowMenu(QTreeView& tree, WaveModel& model, QWidget& owner)
    : QMenu(tr("&Rows"), &owner)
    , m_tree(tree)
    , m_model(model)
    , m_owner(owner)
{
    addChoices();
    addSeparator();
    const auto moveBy = [this](const QString& text, const QString& key, int step) {
        connect(add(text, key, nullptr), &QAction::triggered, this, [this, step] { move(step); });
    };
    moveBy(tr("Move &up"), "Alt+Up", -1);
    moveBy(tr("Move &down"), "Alt+Down", 1);
    add(tr("&Group"), "Ctrl+G", &WaveRowMenu::group);
    add(tr("Add d&ivider"), {}, &WaveRowMenu::addDivider);
    m_rename = add(tr("Re&name"), "F2", nullptr);
    connect(m_rename, &QAction::triggered, this,
        [this] { m_tree.edit(m_tree.currentIndex().siblingAtColumn(WaveModel::Name)); });
    m_remove = add(tr("Remo&ve group or divider"), "Del", &WaveRowMenu::remove);
    addSeparator();
    m_hide = add(tr("&Hide"), "H", &WaveRowMenu::hideRows);
    m_hide->setCheckable(true);
    QAction* hidden = add(tr("&Show hidden rows"), {}, nullptr);
    hidden->setCheckable(true);
    connect(hidden, &QAction::toggled, this, [this](bool on) { m_model.setShowsHidden(on); });
    addAction(tr("&Expand all"), &m_tree, &QTreeView::expandAll);
    addAction(tr("&Collapse all"), &m_tree, &QTreeView::collapseAll);
    addAction(tr("Usual &layout"), this, [this] { m_model.edit(WaveEntries()); });
    connect(this, &QMenu::aboutToShow, this, &WaveRowMenu::showState);
    connect(this, &QMenu::aboutToHide, this, [this] { // the keys of disabled actions do nothing
        m_remove->setEnabled(true);
        m_rename->setEnabled(true);
    });
}

QAction* WaveRowMenu::add(const QString& text, const QString& key, void (WaveRowMenu::*act)())
{
    QAction* action = addAction(text);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_owner.addAction(action);
    if (act)
        connect(action, &QAction::triggered, this, act);
    return action;
}

/// A menu with one value marked, that of the current row.
QMenu* WaveRowMenu::addChoice(const Choice& choice)
{
    QMenu* menu = addMenu(choice.title);
    auto* group = new QActionGroup(menu);
    for (int value = 0; value < choice.count; ++value) {
        QAction* action = menu->addAction('&' + choice.name(value), this, [this, choice, value] {
            m_model.edit(chosen(), [&](WaveEntry& entry) { choice.apply(entry, value); });
        });
        action->setCheckable(true);
        group->addAction(action);
    }
    connect(menu, &QMenu::aboutToShow, this, [this, menu, choice] {
        const int now
            = m_model.entry(m_tree.currentIndex()) ? choice.valueOf(m_tree.currentIndex()) : -1;
        for (int value = 0; value < choice.count; ++value)
            menu->actions().at(value)->setChecked(value == now);
    });
    return menu;
}

void WaveRowMenu::addChoices()
{
    addChoice({tr("&Radix"), kRadixes, [](int value) { return radixName(Radix(value)); },
        [this](const QModelIndex& index) { return int(m_model.radix(index)); },
        [](WaveEntry& entry, int value) { entry.radix = Radix(value); }});
    addChoice({tr("Dra&w as"), kWaveShapes, [](int value) { return shapeName(WaveShape(value)); },
        [this](const QModelIndex& index) { return int(m_model.entry(index)->shape); },
        [](WaveEntry& entry, int value) {
            entry.shape = WaveShape(value);
            if (entry.shape != WaveShape::Digits && entry.height == 1)
                entry.height = kCurveHeight;
        }});
    QMenu* colors = addChoice({tr("C&olor"), kRowColors + 1, rowColorName,
        [this](const QModelIndex& index) { return m_model.entry(index)->color; },
        [](WaveEntry& entry, int value) { entry.color = value; }});
    for (int color = 1; color <= kRowColors; ++color)
        colors->actions().at(color)->setIcon(colorIcon(color, palette()));
    addChoice({tr("Heigh&t"), int(std::size(kHeights)),
        [](int value) { return tr("%n line(s)", nullptr, kHeights[value]); },
        [this](const QModelIndex& index) {
            const auto* found
                = std::find(std::begin(kHeights), std::end(kHeights), m_model.entry(index)->height);
            return int(found - std::begin(kHeights));
        },
        [](WaveEntry& entry, int value) { entry.height = kHeights[value]; }});
}

void WaveRowMenu::showState()
{
    const QModelIndexList indexes = chosen();
    const auto is = [&](bool (*test)(const WaveEntry&)) {
        return std::any_of(indexes.begin(), indexes.end(),
            [&](const QModelIndex& index) { return test(*m_model.entry(index)); });
    };
    m_hide->setChecked(is([](const WaveEntry& entry) { return entry.hidden; }));
    m_remove->setEnabled(is([](const WaveEntry& entry) { return !entry.isWave(); }));
    m_rename->setEnabled(m_remove->isEnabled());
}

/// The selected rows from top to bottom; of bits, their buses.
QModelIndexList WaveRowMenu::chosen() const
{
    QModelIndexList selected = m_tree.selectionModel()->selectedRows();
    if (selected.isEmpty() && m_tree.currentIndex().isValid())
        selected += m_tree.currentIndex().siblingAtColumn(WaveModel::Name);
    QModelIndexList indexes;
    for (const QModelIndex& index : qAsConst(selected)) {
        const QModelIndex row = m_model.isBit(index) ? index.parent() : index;
        if (!indexes.contains(row))
            indexes += row;
    }
    const auto placeOf = [](const QModelIndex& index) {
        const QModelIndex parent = index.parent();
        return parent.isValid() ? std::make_pair(parent.row(), index.row())
                                : std::make_pair(index.row(), -1);
    };
    std::sort(indexes.begin(), indexes.end(),
        [&](const QModelIndex& a, const QModelIndex& b) { return placeOf(a) < placeOf(b); });
    return indexes;
}

void WaveRowMenu::setRadix(Radix radix)
{
    m_model.edit({m_tree.currentIndex()}, [&](WaveEntry& entry) { entry.radix = radix; });
}

/// The place one step from `edge`, out of its group or into an open one where it ends.
WavePlace WaveRowMenu::placeAfterStep(const QModelIndex& edge, int step, bool mayEnterGroup) const
{
    const QModelIndex group = edge.parent();
    const auto at = [&](int row, const QModelIndex& parent) {
        return m_model.entry(m_model.index(row, 0, parent));
    };
    const QModelIndex next = m_model.index(edge.row() + step, 0, group);
    if (!next.isValid() && !group.isValid())
        return {nullptr, step < 0 ? m_model.entry(edge) : nullptr};
    if (!next.isValid())
        return {nullptr, at(group.row() + (step < 0 ? 0 : 1), {})};
    const WaveEntry* entry = m_model.entry(next);
    if (entry->kind == WaveEntry::Group && mayEnterGroup && m_tree.isExpanded(next))
        return {entry, step < 0 ? nullptr : at(0, next)};
    return {m_model.entry(group), at(next.row() + (step < 0 ? 0 : 1), group)};
}

void WaveRowMenu::move(int step)
{
    const QModelIndexList indexes = chosen();
    if (indexes.isEmpty())
        return;
    const bool hasGroup = std::any_of(indexes.begin(), indexes.end(),
        [&](const auto& index) { return m_model.entry(index)->kind == WaveEntry::Group; });
    const QModelIndex edge = step < 0 ? indexes.first() : indexes.last();
    const WavePlace place = placeAfterStep(edge, step, !hasGroup);
    m_model.edit(moved(m_model.entries(), m_model.entriesOf(indexes), place));
    m_tree.scrollTo(m_tree.currentIndex());
}

void WaveRowMenu::group()
{
    WaveEntry entry;
    entry.kind = WaveEntry::Group;
    entry.name = tr("Group");
    entry.expanded = true;
    m_model.edit(grouped(m_model.entries(), m_model.entriesOf(chosen()), entry));
    editName(entry.id);
}

void WaveRowMenu::addDivider()
{
    WaveEntry entry;
    entry.kind = WaveEntry::Divider;
    const QModelIndex current = m_tree.currentIndex();
    const QModelIndex row = m_model.isBit(current) ? current.parent() : current;
    m_model.edit(
        inserted(m_model.entries(), entry, {m_model.entry(row.parent()), m_model.entry(row)}));
    editName(entry.id);
}

void WaveRowMenu::editName(int entryId)
{
    const QModelIndex index = m_model.find(entryId);
    m_tree.setCurrentIndex(index);
    m_tree.edit(index);
}

void WaveRowMenu::remove()
{
    QModelIndexList indexes = chosen();
    const auto isWave = [&](const auto& index) { return m_model.entry(index)->isWave(); };
    indexes.erase(std::remove_if(indexes.begin(), indexes.end(), isWave), indexes.end());
    m_model.edit(removed(m_model.entries(), m_model.entriesOf(indexes)));
}

void WaveRowMenu::hideRows()
{
    const QModelIndexList indexes = chosen();
    const bool hides = std::none_of(indexes.begin(), indexes.end(),
        [&](const auto& index) { return m_model.entry(index)->hidden; });
    m_model.edit(indexes, [&](WaveEntry& entry) { entry.hidden = hides; });
}
