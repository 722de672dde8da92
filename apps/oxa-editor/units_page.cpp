// SPDX-License-Identifier: Apache-2.0
#include "units_page.h"

#include "cell_delegate.h"
#include "unit_dialog.h"

#include "oxautils/editor/match_unit_model.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using namespace OXA;

namespace {

enum Column { SwitchColumn, NameColumn, ValueColumn = 6 };

}

UnitsPage::UnitsPage(Document& document, QWidget* parent)
    : CorePage(document, Page::Units, parent)
    , m_model(new MatchUnitModel(this))
    , m_view(new QTableView)
{
    m_view->setAccessibleName(tr("Match units"));
    m_view->setModel(m_model);
    m_view->setItemDelegate(new CellDelegate(m_view));
    m_view->setColumnHidden(NameColumn, true); // repeats the first column
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 8 / 5);
    m_view->horizontalHeader()->setHighlightSections(false);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setTabKeyNavigation(false);
    m_view->setWordWrap(false);
    m_view->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_view->horizontalHeader()->setSectionResizeMode(ValueColumn, QHeaderView::Stretch);
    m_view->installEventFilter(this);
    setEntry(m_view);
    auto* edit = new QPushButton(tr("E&dit…"));
    edit->setToolTip(tr("Edit the chosen unit (Enter); the space key switches it on and off"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_view, 1);
    layout->addWidget(edit, 0, Qt::AlignLeft);

    connect(m_view, &QTableView::doubleClicked, this, &UnitsPage::editUnit);
    connect(edit, &QPushButton::clicked, this, [this] { editUnit(m_view->currentIndex()); });
    connect(m_model, &MatchUnitModel::modified, this, &UnitsPage::storeSwitches);
}

void UnitsPage::refresh()
{
    QList<MatchUnit*> units;
    if (standard())
        units = standard()->matchUnits;
    if (size_t(units.size()) != m_drafts.size()) {
        m_model->reset();
        m_drafts.resize(size_t(units.size()));
        QList<MatchUnit*> rows;
        for (MatchUnit& draft : m_drafts)
            rows += &draft;
        m_model->setMatcherList(rows);
        m_view->selectRow(0);
    }
    for (int row = 0; row < units.size(); ++row) {
        m_drafts[size_t(row)] = *units.at(row);
        m_model->updateRow(row);
    }
}

void UnitsPage::reveal(int item)
{
    m_view->selectRow(item);
    m_view->setFocus();
}

bool UnitsPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !m_view->currentIndex().isValid())
        return CorePage::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        editUnit(m_view->currentIndex());
        return true;
    }
    // The table would stay in the row: its keys go from column to column.
    if (key == Qt::Key_Home || key == Qt::Key_End) {
        m_view->selectRow(key == Qt::Key_Home ? 0 : m_model->rowCount() - 1);
        return true;
    }
    if (key == Qt::Key_Space) {
        const QModelIndex cell = m_view->currentIndex().siblingAtColumn(SwitchColumn);
        const bool on = cell.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        m_model->setData(cell, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        return true;
    }
    return CorePage::eventFilter(watched, event);
}

void UnitsPage::editUnit(const QModelIndex& index)
{
    MatchUnit* draft = MatchUnitModel::muFromIndex(index);
    if (!draft)
        return;
    const bool wasUnused = !draft->trigger;
    UnitDialog dialog(draft, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (wasUnused && draft->trigger)
        draft->enabled = true; // a unit that gets its first port is going to be used
    store(index.row(), tr("edit M%1").arg(draft->index));
}

void UnitsPage::store(int row, const QString& step)
{
    MatchUnit* unit = standard()->matchUnits.at(row);
    const MatchUnit draft = m_drafts.at(size_t(row));
    document().set(location(unit->index), *unit, draft, step);
}

void UnitsPage::storeSwitches()
{
    for (int row = 0; row < int(m_drafts.size()); ++row) {
        const MatchUnit& draft = m_drafts.at(size_t(row));
        if (draft.enabled != standard()->matchUnits.at(row)->enabled)
            store(
                row, (draft.enabled ? tr("switch M%1 on") : tr("switch M%1 off")).arg(draft.index));
    }
}
