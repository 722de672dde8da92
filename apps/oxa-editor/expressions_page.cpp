// SPDX-License-Identifier: Apache-2.0
#include "expressions_page.h"

#include "expression_edit.h"
#include "least_lines.h"
#include "scrolling.h"
#include "signal_names.h"
#include "truth_table.h"

#include "oxautils/encoding/expression_tokens.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/shown_text.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

using namespace OXA;

namespace {

constexpr int kWidest = 140; // characters, of an expression
constexpr int kFewestCharacters = 16; // of a choice
constexpr int kPlaceRole = Qt::UserRole; // position of an expression in the core's list

}

ExpressionsPage::ExpressionsPage(Document& document, QWidget* parent)
    : CorePage(document, Page::Expressions, parent)
    , m_kind(new QComboBox)
    , m_memory(new QComboBox)
    , m_list(new QListWidget)
    , m_edit(new ExpressionEdit)
    , m_complaint(new QLabel)
    , m_table(new TruthTable(this))
    , m_tableView(new QTableView)
    , m_reason(new QLabel)
{
    auto* left = new QWidget;
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(makeKind());
    column->addWidget(makeList(), 1);
    column->addWidget(makeEditor());

    auto* right = new QWidget;
    auto* tableColumn = new QVBoxLayout(right);
    tableColumn->setContentsMargins(0, 0, 0, 0);
    m_tableView->setModel(m_table);
    m_tableView->setAccessibleName(tr("Truth table"));
    m_tableView->setSelectionMode(QAbstractItemView::NoSelection);
    m_tableView->setTabKeyNavigation(false);
    m_tableView->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tableView->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 5 / 4);
    m_reason->setWordWrap(true);
    tableColumn->addWidget(m_tableView, 1);
    tableColumn->addWidget(m_reason);

    auto* splitter = new QSplitter;
    left->setMaximumWidth(fontMetrics().averageCharWidth() * kWidest);
    QWidget* area = scrolling(left);
    area->setMaximumWidth(left->maximumWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    splitter->addWidget(area);
    splitter->addWidget(right);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    setEntry(m_list);
}

QWidget* ExpressionsPage::makeKind()
{
    auto* widget = new QWidget;
    auto* form = new QFormLayout(widget);
    form->setContentsMargins(0, 0, 0, 0);
    m_kind->addItems(
        {tr("Static: part of the netlist"), tr("Dynamic: tables, rewritten at run time")});
    m_memory->addItems({tr("Block SRAM"), tr("Registers"), tr("Shadow SRAM")});
    for (QComboBox* box : {m_kind, m_memory}) { // narrower than its longest text, if need be
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(kFewestCharacters);
    }
    form->addRow(tr("E&xpressions:"), m_kind);
    form->addRow(tr("Tables &in:"), m_memory);
    connect(m_kind, QOverload<int>::of(&QComboBox::activated), this, [this](int kind) {
        if (standard())
            document().set(location(), standard()->expressionType, kind,
                tr("change the kind of the expressions"));
    });
    connect(m_memory, QOverload<int>::of(&QComboBox::activated), this, [this](int memory) {
        if (standard())
            document().set(location(), standard()->exImplementation, memory,
                tr("change the memory of the tables"));
    });
    return widget;
}

QWidget* ExpressionsPage::makeList()
{
    auto* widget = new QWidget;
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    m_list->setAccessibleName(tr("Expressions in the order of the trigger sequence"));
    keepLeastLines(*m_list);
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    layout->addWidget(m_list, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(addButton(tr("&Add"), QKeySequence(Qt::Key_Insert), [this] { add(); }));
    m_needRow = {addButton(tr("&Remove"), QKeySequence::Delete, [this] { remove(); }),
        addButton(tr("&Up"), QKeySequence("Alt+Up"), [this] { move(-1); }),
        addButton(tr("Dow&n"), QKeySequence("Alt+Down"), [this] { move(1); })};
    for (QToolButton* button : qAsConst(m_needRow))
        buttons->addWidget(button);
    buttons->addStretch();
    layout->addLayout(buttons);
    connect(m_list, &QListWidget::currentRowChanged, this, [this] {
        document().endRun();
        showExpression();
    });
    connect(m_list, &QListWidget::itemActivated, this, [this] { m_edit->setFocus(); });
    // After the drop: the list must not change while the view still handles it.
    connect(m_list->model(), &QAbstractItemModel::rowsMoved, this,
        [this] { QTimer::singleShot(0, this, &ExpressionsPage::takeOrder); });
    return widget;
}

/// A button with a keyboard shortcut in the list.
QToolButton* ExpressionsPage::addButton(
    const QString& text, const QKeySequence& keys, const std::function<void()>& done)
{
    auto* button = new QToolButton;
    button->setText(text);
    button->setAccessibleName(QString(text).remove('&'));
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(keys.toString(QKeySequence::NativeText));
    connect(button, &QToolButton::clicked, this, done);
    auto* shortcut = new QShortcut(keys, m_list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [=] {
        if (button->isEnabled())
            done();
    });
    return button;
}

QWidget* ExpressionsPage::makeEditor()
{
    auto* widget = new QWidget;
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(tr("Expressi&on:"));
    label->setBuddy(m_edit);
    m_edit->setAccessibleName(tr("Expression"));
    m_complaint->setWordWrap(true);
    m_complaint->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    m_complaint->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    layout->addWidget(label);
    layout->addWidget(m_edit);
    layout->addWidget(m_complaint);
    connect(m_edit, &ExpressionEdit::typed, this, [this](const QString& text) {
        QStringList expressions = this->expressions();
        const int row = m_list->currentRow();
        if (row < 0 || row >= expressions.size())
            return;
        expressions[row] = text;
        document().type(
            location(row), standard()->expressions, expressions, tr("edit an expression"));
    });
    connect(m_edit, &ExpressionEdit::finished, this, [this] { document().endRun(); });
    return widget;
}

void ExpressionsPage::refresh()
{
    if (!standard())
        return;
    const AoCore& shown = *standard();
    const bool dynamic = shown.expressionType == DynamicExpressions;
    m_kind->setCurrentIndex(dynamic ? DynamicExpressions : StaticExpressions);
    m_memory->setCurrentIndex(shown.exImplementation <= ShadowSram ? shown.exImplementation : -1);
    m_memory->setEnabled(dynamic);
    {
        const QSignalBlocker blocker(m_list);
        const int row = m_list->currentRow();
        while (m_list->count() > shown.expressions.size())
            delete m_list->takeItem(m_list->count() - 1);
        while (m_list->count() < shown.expressions.size())
            m_list->addItem(QString());
        for (int i = 0; i < m_list->count(); ++i) {
            m_list->item(i)->setFlags(m_list->item(i)->flags() & ~Qt::ItemIsDropEnabled);
            m_list->item(i)->setData(kPlaceRole, i);
            m_list->item(i)->setText(
                QString("%1  %2").arg(listNumber(i), shownText(shown.expressions.at(i))));
        }
        m_list->setCurrentRow(qBound(m_list->count() > 0 ? 0 : -1, row, m_list->count() - 1));
    }
    m_edit->setUnits(shown);
    showExpression();
}

void ExpressionsPage::showExpression()
{
    const int row = m_list->currentRow();
    const bool shown = standard() && row >= 0;
    m_edit->setEnabled(shown);
    for (QToolButton* button : qAsConst(m_needRow))
        button->setEnabled(shown);
    if (!shown) {
        m_edit->setText({});
        m_edit->setMarks({});
        m_complaint->clear();
        m_reason->setText(tr("Without an expression, the core triggers only when forced."));
        m_table->setExpression({}, AoCore(0));
        return;
    }
    const AoCore& core = *standard();
    const QString text = core.expressions.at(row);
    m_edit->setText(text);
    m_table->setExpression(text, core);
    QList<ExpressionMark> marks = expressionMarks(text, core);
    if (marks.isEmpty() && !m_table->reason().isEmpty() && namedUnits(tokensOf(text)).size() <= 6)
        marks.append({0, int(text.size()), m_table->reason()});
    m_edit->setMarks(marks);
    m_complaint->setText(complaintText(marks));
    m_reason->setText(marks.isEmpty() ? m_table->reason() : QString());
}

void ExpressionsPage::reveal(int item)
{
    if (item >= 0)
        m_list->setCurrentRow(item);
}

QStringList ExpressionsPage::expressions() const
{
    return standard() ? standard()->expressions : QStringList();
}

void ExpressionsPage::change(const QStringList& expressions, const QString& step, int current)
{
    if (!standard())
        return;
    document().set(location(current), standard()->expressions, expressions, step);
    m_list->setCurrentRow(current);
}

void ExpressionsPage::add()
{
    QStringList expressions = this->expressions();
    const int at = qMin(m_list->currentRow() + 1, expressions.size());
    expressions.insert(at, QString());
    change(expressions, tr("add an expression"), at);
    m_edit->setFocus();
}

void ExpressionsPage::remove()
{
    QStringList expressions = this->expressions();
    const int row = m_list->currentRow();
    if (row < 0 || row >= expressions.size())
        return;
    expressions.removeAt(row);
    change(expressions, tr("remove an expression"), qMin(row, expressions.size() - 1));
}

/// Applies the order of the dragged rows to the document.
void ExpressionsPage::takeOrder()
{
    const QStringList before = expressions();
    QStringList expressions;
    for (int row = 0; row < m_list->count(); ++row)
        expressions += before.value(m_list->item(row)->data(kPlaceRole).toInt());
    if (expressions.size() == before.size())
        change(expressions, tr("move an expression"), m_list->currentRow());
}

void ExpressionsPage::move(int by)
{
    QStringList expressions = this->expressions();
    const int row = m_list->currentRow();
    if (qMin(row, row + by) < 0 || qMax(row, row + by) >= expressions.size())
        return;
    expressions.move(row, row + by);
    change(expressions, tr("move an expression"), row + by);
}
