// SPDX-License-Identifier: Apache-2.0
#include "signal_editor.h"

#include "add_signals_dialog.h"
#include "cell_delegate.h"
#include "flow_layout.h"
#include "signal_clipboard.h"
#include "signal_model.h"
#include "signal_names.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMessageBox>
#include <QMimeData>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

using namespace OXA;

SignalEditor::SignalEditor(bool captures, QWidget* parent)
    : QWidget(parent)
    , m_model(new SignalModel(captures, this))
    , m_buttons(new FlowLayout)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(m_buttons);
    makeActions();
    m_view = new QTreeView; // now, because the order of creation is the Tab order
    layout->addWidget(m_view, 1);
    setUpView(captures);

    keepExpanded();
    connect(m_model, &SignalModel::edited, this, &SignalEditor::edited);
    connect(m_model, &SignalModel::dropped, this, &SignalEditor::select);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &SignalEditor::updateActions);
    updateActions();
}

void SignalEditor::makeActions()
{
    addButton(makeAction(tr("&Add…"), QKeySequence(Qt::Key_Insert),
        tr("Add signals from a list of names"), &SignalEditor::add));
    addButton(makeAction(tr("From De&sign…"), {},
        tr("Choose among the signals of the design, or of a waveform"),
        &SignalEditor::designWanted));
    const auto forSelection = [this](QAction* action) {
        m_needSelection += action;
        return action;
    };
    addButton(forSelection(makeAction(tr("&Remove"), QKeySequence::Delete,
        tr("Remove the selected signals"), &SignalEditor::remove)));
    addButton(forSelection(makeAction(tr("&Group"), QKeySequence("Ctrl+G"),
        tr("Group the selected signals into a bus, the first as most significant bit"),
        &SignalEditor::group)));
    m_ungroup = makeAction(tr("&Ungroup"), QKeySequence("Ctrl+Shift+G"),
        tr("Replace the selected buses by their bits"), &SignalEditor::ungroup);
    addButton(m_ungroup);
    addButton(forSelection(makeAction(tr("U&p"), QKeySequence("Alt+Up"),
                  tr("Move the selected signals up"), &SignalEditor::moveUp)))
        ->setArrowType(Qt::UpArrow);
    addButton(forSelection(makeAction(tr("Do&wn"), QKeySequence("Alt+Down"),
                  tr("Move the selected signals down"), &SignalEditor::moveDown)))
        ->setArrowType(Qt::DownArrow);
    forSelection(makeAction(tr("Re&name"), {}, {}, &SignalEditor::rename));
    forSelection(makeAction(tr("Cu&t"), QKeySequence::Cut, {}, &SignalEditor::cut));
    forSelection(makeAction(tr("&Copy"), QKeySequence::Copy, {}, &SignalEditor::copy));
    makeAction(tr("Pa&ste Names"), QKeySequence::Paste, {}, &SignalEditor::paste);
}

void SignalEditor::setUpView(bool captures)
{
    m_view->setModel(m_model);
    m_view->setItemDelegate(new CellDelegate(m_view));
    m_view->setAccessibleName(tr("Signals"));
    m_view->addActions(actions());
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setUniformRowHeights(true);
    m_view->setTextElideMode(Qt::ElideMiddle);
    m_view->setDragEnabled(true);
    m_view->setAcceptDrops(true);
    m_view->setDragDropMode(QAbstractItemView::DragDrop);
    m_view->setDefaultDropAction(Qt::MoveAction);
    m_view->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    QHeaderView* header = m_view->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(SignalModel::NameColumn, QHeaderView::Stretch);
    header->resizeSection(SignalModel::TextColumn, fontMetrics().averageCharWidth() * 24);
    if (captures)
        header->setSectionResizeMode(SignalModel::CaptureColumn, QHeaderView::ResizeToContents);
}

/// Rows restored, for example by undo, are expanded as before.
void SignalEditor::keepExpanded()
{
    const auto nameOf = [this](const QModelIndex& index) { return m_model->itemAt(index)->name; };
    connect(m_view, &QTreeView::expanded, this,
        [=](const QModelIndex& index) { m_expanded += nameOf(index); });
    connect(m_view, &QTreeView::collapsed, this,
        [=](const QModelIndex& index) { m_expanded -= nameOf(index); });
    connect(m_model, &QAbstractItemModel::rowsInserted, this,
        [=](const QModelIndex& parent, int first, int last) {
            for (int row = first; row <= last && !parent.isValid(); ++row) {
                const QModelIndex index = m_model->index(row, 0);
                if (m_expanded.contains(nameOf(index)))
                    m_view->expand(index);
            }
        });
}

QAction* SignalEditor::makeAction(const QString& text, const QKeySequence& keys,
    const QString& hint, void (SignalEditor::*done)())
{
    auto* action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    if (!hint.isEmpty())
        action->setToolTip(keys.isEmpty()
                ? hint
                : QString("%1 (%2)").arg(hint, keys.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this, done);
    addAction(action);
    return action;
}

QToolButton* SignalEditor::addButton(QAction* action)
{
    auto* button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setAccessibleName(action->iconText());
    button->setFocusPolicy(Qt::StrongFocus);
    m_buttons->addWidget(button);
    if (m_view)
        setTabOrder(button, m_view);
    return button;
}

void SignalEditor::setItems(const QList<SignalItem>& items)
{
    m_model->setItems(items);
    updateActions();
}

void SignalEditor::updateActions()
{
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    for (QAction* action : qAsConst(m_needSelection))
        action->setEnabled(!rows.isEmpty());
    m_ungroup->setEnabled(std::any_of(rows.begin(), rows.end(),
        [this](const QModelIndex& row) { return m_model->itemAt(row)->isBus(); }));
}

/// The selected top-level rows, ascending.
QList<int> SignalEditor::selectedTop() const
{
    QList<int> rows;
    for (const QModelIndex& index : m_view->selectionModel()->selectedRows()) {
        if (!index.parent().isValid())
            rows += index.row();
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

/// The selected items in the list's order, without bits whose bus is selected.
QList<SignalItem> SignalEditor::selectedItems() const
{
    const QItemSelectionModel* selection = m_view->selectionModel();
    QList<SignalItem> items;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex top = m_model->index(row, 0);
        if (selection->isRowSelected(row, {})) {
            items += *m_model->itemAt(top);
            continue;
        }
        for (int bit = 0; bit < m_model->rowCount(top); ++bit) {
            if (selection->isRowSelected(bit, top))
                items += *m_model->itemAt(m_model->index(bit, 0, top));
        }
    }
    return items;
}

void SignalEditor::select(int first, int count, const QModelIndex& parent)
{
    const QModelIndex top = m_model->index(first, 0, parent);
    const QModelIndex bottom = m_model->index(first + count - 1, 0, parent);
    if (!top.isValid() || !bottom.isValid())
        return;
    QItemSelectionModel* selection = m_view->selectionModel();
    selection->setCurrentIndex(top, QItemSelectionModel::NoUpdate);
    selection->select(QItemSelection(top, bottom),
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_view->scrollTo(bottom);
    m_view->scrollTo(top);
}

void SignalEditor::selectNamedIn(const QString& text)
{
    const QList<SignalItem>& items = m_model->items();
    for (int row = 0; row < items.size(); ++row) {
        if (isNamedIn(text, items.at(row).name))
            return select(row, 1, {});
        const QList<SignalItem>& bits = items.at(row).subItems;
        for (int bit = 0; bit < bits.size(); ++bit) {
            if (isNamedIn(text, bits.at(bit).name))
                return select(bit, 1, m_model->index(row, 0));
        }
    }
}

void SignalEditor::insert(const QList<SignalItem>& items, const QString& step)
{
    if (items.isEmpty())
        return;
    int at = 0;
    for (const QModelIndex& row : m_view->selectionModel()->selectedRows())
        at = qMax(at, (row.parent().isValid() ? row.parent() : row).row() + 1);
    if (at == 0)
        at = m_model->rowCount();
    QList<SignalItem> list = m_model->items();
    for (int i = 0; i < items.size(); ++i)
        list.insert(at + i, items.at(i));
    Q_EMIT edited(list, step);
    select(at, items.size(), {});
}

void SignalEditor::add()
{
    AddSignalsDialog dialog(m_design, this);
    if (dialog.exec() == QDialog::Accepted)
        insert(dialog.items(), tr("add signals"));
}

void SignalEditor::cut()
{
    copy();
    remove();
}

void SignalEditor::copy() { QApplication::clipboard()->setMimeData(toMimeData(selectedItems())); }

void SignalEditor::paste()
{
    QStringList errors;
    const QList<SignalItem> items = fromMimeData(QApplication::clipboard()->mimeData(), errors);
    if (errors.isEmpty())
        insert(items, tr("paste signals"));
    else
        QMessageBox::warning(this, tr("Paste Names"), errors.join('\n'));
}

void SignalEditor::rename()
{
    const QModelIndex current = m_view->currentIndex();
    if (current.isValid())
        m_view->edit(current.siblingAtColumn(SignalModel::NameColumn));
}

void SignalEditor::remove()
{
    const QItemSelectionModel* selection = m_view->selectionModel();
    const int current = m_view->currentIndex().row();
    QList<SignalItem> left;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex top = m_model->index(row, 0);
        SignalItem item = *m_model->itemAt(top);
        const bool bus = item.isBus();
        for (int bit = item.subItems.size() - 1; bit >= 0; --bit) {
            if (selection->isRowSelected(bit, top))
                item.subItems.removeAt(bit);
        }
        const bool emptied = bus && !item.isBus();
        if (!selection->isRowSelected(row, {}) && !emptied)
            left += item;
    }
    Q_EMIT edited(left, tr("remove signals"));
    select(qBound(0, current, m_model->rowCount() - 1), 1, {});
}

void SignalEditor::group()
{
    const QList<int> rows = selectedTop();
    if (rows.isEmpty())
        return;
    QList<SignalItem> list = m_model->items();
    QList<SignalItem> bits;
    bool captured = false;
    for (const int row : rows) {
        const SignalItem& item = list.at(row);
        captured |= item.captureEnable;
        bits += item.isBus() ? item.subItems : QList<SignalItem> {item};
    }
    for (SignalItem& bit : bits)
        bit.captureEnable = true; // a bit has no separate switch
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        list.removeAt(*row);
    SignalItem bus = groupSignals(bits);
    bus.captureEnable = captured;
    list.insert(rows.first(), bus);
    Q_EMIT edited(list, tr("group signals into a bus"));
    select(rows.first(), 1, {});
}

void SignalEditor::ungroup()
{
    QList<SignalItem> list = m_model->items();
    const QList<int> rows = selectedTop();
    for (auto row = rows.crbegin(); row != rows.crend(); ++row) {
        if (!list.at(*row).isBus())
            continue;
        const SignalItem bus = list.takeAt(*row);
        for (int i = 0; i < bus.subItems.size(); ++i) {
            SignalItem bit = bus.subItems.at(i);
            bit.captureEnable = bus.captureEnable;
            list.insert(*row + i, bit);
        }
    }
    Q_EMIT edited(list, tr("ungroup a bus"));
}

void SignalEditor::moveUp() { move(true); }

void SignalEditor::moveDown() { move(false); }

void SignalEditor::move(bool up)
{
    const QModelIndex parent = m_view->currentIndex().parent();
    QList<int> rows;
    for (const QModelIndex& index : m_view->selectionModel()->selectedRows()) {
        if (index.parent() == parent)
            rows += index.row();
    }
    if (rows.isEmpty())
        return;
    std::sort(rows.begin(), rows.end());
    const int target = up ? rows.first() - 1 : rows.last() + 2;
    if (target < 0 || target > m_model->rowCount(parent))
        return;
    const QPersistentModelIndex bus = parent;
    select(m_model->moveRowsTo(parent, rows, target, tr("move signals")), int(rows.size()), bus);
}
