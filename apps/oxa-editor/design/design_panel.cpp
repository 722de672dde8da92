// SPDX-License-Identifier: Apache-2.0
#include "design_panel.h"

#include "design_model.h"
#include "design_sources_form.h"

#include "oxa-editor/least_lines.h"

#include "oxautils/model/shown_text.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>
#include <QTreeView>

using namespace OXA;

namespace {

constexpr int kMostMessages = 200;
constexpr int kExpandedAtOnce = 2000; // signals that a filter found
constexpr int kMessageLines = 4; // visible

}

DesignPanel::DesignPanel(Document& document, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_job(new DesignJob(this))
    , m_model(new DesignModel(this))
    , m_sources(new DesignSourcesForm(document))
    , m_read(new QPushButton(tr("Read the Design")))
    , m_readWaveform(new QPushButton(tr("Read a Waveform…")))
    , m_cancel(new QPushButton(tr("Cancel Reading")))
    , m_state(new QLabel)
    , m_messages(new QListWidget)
    , m_filter(new QLineEdit)
    , m_view(new QTreeView)
    , m_count(new QLabel)
{
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(layOutSignals(), 5);
    layout->addLayout(layOutReading(), 2);
    setFocusProxy(m_filter); // the first field, or Tab would skip those before it
    connect(m_job, &DesignJob::finished, this, &DesignPanel::take);
    connect(m_job, &DesignJob::progress, this, [this](const QString& stage, int percent) {
        if (m_wanted)
            m_state->setText(tr("Reading: %1, %2 %").arg(stage, QString::number(percent)));
    });
    connect(m_sources, &DesignSourcesForm::changed, this, &DesignPanel::showRunning);
    connect(m_sources, &DesignSourcesForm::failed, this,
        [this](const QString& error) { showMessages({error}); });
    connect(&m_document, &Document::replaced, this, &DesignPanel::drop);
    connect(&m_document, &Document::designChanged, this, &DesignPanel::showDesign);
    showDesign();
    showRunning();
}

QLayout* DesignPanel::layOutReading()
{
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    m_messages->setAccessibleName(tr("Messages about the design"));
    m_messages->setWordWrap(true);
    keepMostLines(*m_messages, kMessageLines);
    m_messages->hide();
    connect(m_read, &QPushButton::clicked, this, &DesignPanel::read);
    connect(m_readWaveform, &QPushButton::clicked, this, &DesignPanel::readWaveform);
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_job->stop(); });
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_read, m_readWaveform, m_cancel})
        buttons->addWidget(button);
    buttons->addStretch();
    auto* layout = new QVBoxLayout;
    layout->addWidget(m_sources, 1);
    layout->addLayout(buttons);
    layout->addWidget(m_state);
    layout->addWidget(m_messages);
    return layout;
}

QLayout* DesignPanel::layOutSignals()
{
    auto* label = new QLabel(tr("Filter:"));
    label->setBuddy(m_filter);
    m_filter->setPlaceholderText(tr("part of a path, or a pattern such as cpu/*state"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, &DesignPanel::filter);
    connect(m_filter, &QLineEdit::returnPressed, this, [this] { m_view->setFocus(); });
    auto* top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(m_filter, 1);
    top->addWidget(m_count);
    setUpView();
    auto* buttons = new QHBoxLayout;
    makeActions(buttons);
    buttons->addStretch();
    auto* layout = new QVBoxLayout;
    layout->addLayout(top);
    layout->addWidget(m_view, 1);
    layout->addLayout(buttons);
    return layout;
}

void DesignPanel::setUpView()
{
    m_view->setModel(m_model);
    m_view->setAccessibleName(tr("Signals of the design"));
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setUniformRowHeights(true);
    m_view->setExpandsOnDoubleClick(false); // a double click on a vector adds it
    m_view->setTextElideMode(Qt::ElideMiddle);
    m_view->setDragDropMode(QAbstractItemView::DragOnly);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    QHeaderView* header = m_view->header();
    header->setStretchLastSection(true);
    const int character = fontMetrics().averageCharWidth();
    const int widths[] = {44, 14, 10};
    for (int column = 0; column < 3; ++column)
        header->resizeSection(column, widths[column] * character);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, m_view, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, &DesignPanel::enter);
    connect(m_view, &QTreeView::doubleClicked, this, &DesignPanel::enter);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &DesignPanel::updateActions);
    const auto note = [this](const QModelIndex& index, bool expanded) {
        if (!m_filter->text().isEmpty())
            return;
        if (expanded)
            m_expanded += m_model->nodeAt(index);
        else
            m_expanded -= m_model->nodeAt(index);
    };
    connect(m_view, &QTreeView::expanded, this, [=](const QModelIndex& at) { note(at, true); });
    connect(m_view, &QTreeView::collapsed, this, [=](const QModelIndex& at) { note(at, false); });
}

QAction* DesignPanel::addAction(
    QHBoxLayout* buttons, const QString& text, const QKeySequence& keys, const QString& hint)
{
    auto* action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setToolTip(hint);
    m_view->addAction(action);
    auto* button = new QToolButton;
    button->setDefaultAction(action);
    button->setAccessibleName(action->iconText());
    button->setFocusPolicy(Qt::StrongFocus);
    buttons->addWidget(button);
    return action;
}

void DesignPanel::makeActions(QHBoxLayout* buttons)
{
    m_toData = addAction(buttons, tr("Add to Data Signals"), {},
        tr("Add the selected signals to the data signals of the core (Enter)"));
    connect(m_toData, &QAction::triggered, this, [this] { Q_EMIT dataWanted(chosen()); });
    m_toPort = addAction(buttons, tr("Add to Trigger Port"), QKeySequence("Ctrl+Return"),
        tr("Add the selected signals to the current trigger port of the core (Ctrl+Enter)"));
    connect(m_toPort, &QAction::triggered, this, [this] { Q_EMIT portWanted(chosen()); });
    m_asClock = addAction(buttons, tr("Use as Sample Clock"), {},
        tr("Use the selected signal of one bit as the core's sample clock"));
    connect(m_asClock, &QAction::triggered, this,
        [this] { Q_EMIT clockWanted(chosen().value(0).name); });
}

void DesignPanel::setCore(const CorePtr& core)
{
    m_core = core;
    updateActions();
}

void DesignPanel::begin()
{
    if (!m_document.design() && !m_job->isRunning() && !m_sources->sources().isEmpty())
        read();
}

void DesignPanel::addSources()
{
    m_sources->browse();
    begin();
}

void DesignPanel::read()
{
    m_wanted = true;
    m_job->readSources(m_sources->sources());
    showMessages({});
    showRunning();
}

void DesignPanel::readWaveform()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Read a Waveform"),
        QFileInfo(m_document.path()).absolutePath(),
        tr("Waveforms (*.vcd *.vcd.gz *.fst *.sr);;All files (*)"));
    if (path.isEmpty())
        return;
    m_wanted = true;
    m_job->readWaveform(path);
    showMessages({});
    showRunning();
}

void DesignPanel::take(const DesignJob::Tree& tree, const QString& error)
{
    if (std::exchange(m_wanted, false)) {
        if (tree)
            m_document.setDesign(tree);
        showMessages(tree ? tree->design().warnings : error.split('\n'));
    }
    showRunning();
}

/// Another configuration was opened: the design that was read belongs to the old one. That of the
/// new one is read when the user sees it.
void DesignPanel::drop()
{
    m_wanted = false;
    m_job->stop();
    showRunning();
    if (isVisible())
        begin();
}

void DesignPanel::showDesign()
{
    m_expanded.clear();
    m_filter->clear();
    m_model->setTree(m_document.design());
    if (m_model->rowCount() == 1)
        m_view->expand(m_model->index(0, 0));
    showCount();
    updateActions();
}

void DesignPanel::showMessages(const QStringList& lines)
{
    m_messages->clear();
    for (const QString& line : lines.mid(0, kMostMessages))
        m_messages->addItem(shownText(line));
    if (lines.size() > kMostMessages)
        m_messages->addItem(tr("and %1 more").arg(lines.size() - kMostMessages));
    m_messages->setVisible(!lines.isEmpty());
}

void DesignPanel::showCount()
{
    const DesignJob::Tree& tree = m_document.design();
    const QLocale locale;
    const QString all = locale.toString(tree ? tree->design().items.size() : 0);
    m_count->setText(m_filter->text().isEmpty()
            ? tr("%1 signals").arg(all)
            : tr("%1 of %2 signals").arg(locale.toString(m_model->foundCount()), all));
}

void DesignPanel::showRunning()
{
    const bool running = m_job->isRunning();
    m_read->setEnabled(!running && !m_sources->sources().isEmpty());
    m_readWaveform->setEnabled(!running);
    m_cancel->setEnabled(running);
    m_state->setText(running ? tr("Reading…")
            : m_document.design() || !m_sources->sources().isEmpty()
            ? QString()
            : tr("Add the sources of the design, or read a waveform of it."));
}

void DesignPanel::filter()
{
    const QString text = m_filter->text().trimmed();
    const QModelIndex current = m_view->currentIndex();
    const int node = current.isValid() ? m_model->nodeAt(current) : 0;
    if (m_model->setFilter(text)) {
        expand();
        const QModelIndex same = m_model->indexOf(node);
        m_view->setCurrentIndex(same.isValid() ? same : m_model->index(0, 0));
        updateActions();
    }
    showCount();
}

/// Expands the matches of the filter; without a filter, the rows that were expanded before.
void DesignPanel::expand()
{
    if (m_filter->text().isEmpty()) {
        const QSet<int> nodes = m_expanded;
        for (const int node : nodes)
            m_view->expand(m_model->indexOf(node));
    } else if (m_model->foundCount() <= kExpandedAtOnce) {
        for (const QModelIndex& scope : m_model->scopes())
            m_view->expand(scope);
    } else {
        m_view->expandToDepth(0);
    }
}

void DesignPanel::updateActions()
{
    const QItemSelection selection = m_view->selectionModel()->selection();
    m_toData->setEnabled(m_core && !selection.isEmpty());
    m_toPort->setEnabled(m_core && m_core->standard && !selection.isEmpty());
    const bool single = selection.size() == 1 && selection.first().height() == 1;
    m_asClock->setEnabled(m_core && single && m_model->isOneBit(selection.first().topLeft()));
}

/// Enter and double click: adds the selected signals; expands a scope when none is selected.
void DesignPanel::enter()
{
    const QModelIndex current = m_view->currentIndex();
    if (m_view->selectionModel()->hasSelection())
        m_toData->trigger();
    else if (current.isValid())
        m_view->setExpanded(current.siblingAtColumn(0), !m_view->isExpanded(current));
}

QList<SignalItem> DesignPanel::chosen() const
{
    return m_model->items(m_view->selectionModel()->selectedRows());
}
