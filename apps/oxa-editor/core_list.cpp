// SPDX-License-Identifier: Apache-2.0
#include "core_list.h"

#include "flow_layout.h"
#include "least_lines.h"
#include "signal_names.h"

#include "oxautils/model/shown_text.h"

#include <QLabel>
#include <QListWidget>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

/// Shows the core's position and its module; only the module can be edited.
class CoreItem : public QListWidgetItem {
public:
    CoreItem() { setFlags((flags() | Qt::ItemIsEditable) & ~Qt::ItemIsDropEnabled); }

    int place() const { return m_place; }

    void assign(int place, const QString& module)
    {
        m_place = place;
        setData(Qt::EditRole, module);
    }

    QVariant data(int role) const override
    {
        if (role == Qt::EditRole)
            return m_module;
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
            return QString("%1  %2").arg(listNumber(m_place),
                m_module.isEmpty() ? CoreList::tr("(no module)") : OXA::shownText(m_module));
        return QListWidgetItem::data(role);
    }

    void setData(int role, const QVariant& value) override
    {
        if (role == Qt::EditRole)
            m_module = value.toString();
        QListWidgetItem::setData(role, value);
    }

private:
    int m_place = -1;
    QString m_module;
};

}

CoreList::CoreList(Document& document, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_list(new QListWidget)
{
    auto* label = new QLabel(tr("&Cores"));
    label->setBuddy(m_list);
    m_list->setAccessibleName(tr("Cores"));
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    keepLeastLines(*m_list);
    auto* buttons = new FlowLayout;
    buttons->addWidget(
        addButton(tr("Add"), tr("Add a core"), QKeySequence(Qt::Key_Insert), &CoreList::add));
    m_needCore = {addButton(tr("Duplicate"), tr("Add a copy of the core"), QKeySequence("Ctrl+D"),
                      &CoreList::duplicate),
        addButton(tr("Remove"), tr("Remove the core"), QKeySequence::Delete, &CoreList::remove),
        addButton(tr("Up"), tr("Move the core up"), QKeySequence("Alt+Up"), &CoreList::moveUp),
        addButton(
            tr("Down"), tr("Move the core down"), QKeySequence("Alt+Down"), &CoreList::moveDown)};
    m_needCore.at(2)->setArrowType(Qt::UpArrow);
    m_needCore.at(3)->setArrowType(Qt::DownArrow);
    for (QToolButton* button : qAsConst(m_needCore))
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);

    connect(m_list, &QListWidget::currentRowChanged, this, &CoreList::currentChanged);
    connect(m_list, &QListWidget::itemChanged, this,
        [this](QListWidgetItem* item) { rename(m_list->row(item)); });
    // After the drop: the list must not change while the view still handles it.
    connect(m_list->model(), &QAbstractItemModel::rowsMoved, this,
        [this] { QTimer::singleShot(0, this, &CoreList::takeOrder); });
}

/// A button with a keyboard shortcut in the list.
QToolButton* CoreList::addButton(
    const QString& text, const QString& hint, const QKeySequence& keys, void (CoreList::*done)())
{
    auto* button = new QToolButton;
    button->setText(text);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(QString("%1 (%2)").arg(hint, keys.toString(QKeySequence::NativeText)));
    button->setAccessibleName(hint);
    connect(button, &QToolButton::clicked, this, done);
    auto* shortcut = new QShortcut(keys, m_list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, done);
    return button;
}

CorePtr CoreList::current() const { return m_document.cores().value(m_list->currentRow()); }

void CoreList::setCurrent(const CorePtr& core)
{
    const int row = m_document.cores().indexOf(core);
    if (row >= 0)
        m_list->setCurrentRow(row);
}

void CoreList::refresh()
{
    const int row = m_list->currentRow();
    {
        const QSignalBlocker blocker(m_list);
        const Cores& cores = m_document.cores();
        while (m_list->count() > cores.size())
            delete m_list->takeItem(m_list->count() - 1);
        while (m_list->count() < cores.size())
            m_list->addItem(new CoreItem);
        for (int i = 0; i < cores.size(); ++i)
            static_cast<CoreItem*>(m_list->item(i))->assign(i, cores.at(i)->moduleName());
        m_list->setCurrentRow(qBound(cores.isEmpty() ? -1 : 0, row, cores.size() - 1));
    }
    for (QToolButton* button : qAsConst(m_needCore))
        button->setEnabled(m_list->count() > 0);
    Q_EMIT currentChanged();
}

void CoreList::add()
{
    const int index = m_document.cores().size();
    const CorePtr core = m_document.mode() == OXA::Lite
        ? std::make_shared<Core>(new OXA::AOCore_Lite)
        : std::make_shared<Core>(new OXA::AoCore(index));
    m_document.setCores(Cores(m_document.cores()) << core, tr("add a core"));
    setCurrent(core);
}

void CoreList::duplicate()
{
    if (!current())
        return;
    Cores cores = m_document.cores();
    const CorePtr copy = current()->clone();
    cores.insert(m_list->currentRow() + 1, copy);
    m_document.setCores(cores, tr("duplicate a core"));
    setCurrent(copy);
}

void CoreList::remove()
{
    if (!current())
        return;
    Cores cores = m_document.cores();
    cores.removeAt(m_list->currentRow());
    m_document.setCores(cores, tr("remove a core"));
}

void CoreList::moveUp() { move(-1); }

void CoreList::moveDown() { move(1); }

void CoreList::move(int by)
{
    Cores cores = m_document.cores();
    const int row = m_list->currentRow();
    if (row < 0 || row + by < 0 || row + by >= cores.size())
        return;
    const CorePtr core = cores.at(row);
    cores.move(row, row + by);
    m_document.setCores(cores, tr("move a core"));
    setCurrent(core);
}

/// Applies the order of the dragged rows to the document.
void CoreList::takeOrder()
{
    Cores cores;
    for (int row = 0; row < m_list->count(); ++row)
        cores += m_document.cores().value(static_cast<CoreItem*>(m_list->item(row))->place());
    if (cores == m_document.cores() || cores.size() != m_document.cores().size())
        return;
    const CorePtr moved = cores.value(m_list->currentRow());
    m_document.setCores(cores, tr("move a core"));
    setCurrent(moved);
}

void CoreList::rename(int row)
{
    const CorePtr core = m_document.cores().value(row);
    if (!core)
        return;
    const QString name = cleanName(m_list->item(row)->data(Qt::EditRole).toString());
    m_document.set({core, Page::Capture}, core->moduleName(), name, tr("rename the module"));
}
