// SPDX-License-Identifier: Apache-2.0
#include "ports_page.h"

#include "pick_signals_dialog.h"
#include "signal_editor.h"
#include "signal_names.h"

#include "oxautils/model/limits.h"

#include <QAction>
#include <QListWidget>
#include <QSplitter>
#include <QVBoxLayout>

using namespace OXA;

PortsPage::PortsPage(Document& document, QWidget* parent)
    : CorePage(document, Page::Ports, parent)
    , m_ports(new QListWidget)
    , m_editor(new SignalEditor(false))
{
    m_ports->setAccessibleName(tr("Trigger ports"));
    for (int i = 0; i < kPorts; ++i)
        m_ports->addItem(QString());
    auto* splitter = new QSplitter;
    splitter->addWidget(m_ports);
    splitter->addWidget(m_editor);
    splitter->setStretchFactor(1, 1);
    splitter->setStretchFactor(0, 0);
    m_ports->setMinimumWidth(fontMetrics().averageCharWidth() * 15 + 2 * m_ports->frameWidth());
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({1, 1000});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    setEntry(m_ports);

    auto* pick = new QAction(tr("&Data Signals…"), this);
    pick->setToolTip(tr("Add some of the core's data signals"));
    m_editor->addButton(pick);
    connect(pick, &QAction::triggered, this, &PortsPage::addDataSignals);
    connect(m_editor, &SignalEditor::edited, this, &PortsPage::changePort);
    connect(m_editor, &SignalEditor::designWanted, this, &CorePage::designWanted);
    connect(m_ports, &QListWidget::currentRowChanged, this, &PortsPage::showPort);
    m_ports->setCurrentRow(0);
}

TriggerPort* PortsPage::port() const
{
    return standard() ? standard()->getTrigger(m_ports->currentRow()) : nullptr;
}

void PortsPage::revealNamedIn(const QString& text) { m_editor->selectNamedIn(text); }

void PortsPage::insert(const QList<SignalItem>& items)
{
    if (port())
        m_editor->insert(items, tr("add signals of the design to T%1").arg(port()->index));
}

void PortsPage::refresh()
{
    for (int i = 0; i < kPorts; ++i) {
        const TriggerPort* each = standard() ? standard()->getTrigger(i) : nullptr;
        const int bits = each ? each->singleSignals().size() : 0;
        m_ports->item(i)->setText(
            QString("T%1  %2").arg(listNumber(i), bits > 0 ? bitsText(bits) : tr("unused")));
    }
    showPort();
}

void PortsPage::showPort()
{
    m_editor->setDesign(document().design());
    m_editor->setItems(port() ? port()->signalList : QList<SignalItem>());
}

void PortsPage::reveal(int item)
{
    if (item >= 0 && item < kPorts)
        m_ports->setCurrentRow(item);
}

/// Changes the port; the values of its units follow its bits in the same step.
void PortsPage::changePort(const QList<SignalItem>& items, const QString& step)
{
    TriggerPort* changed = port();
    if (!changed || same(changed->signalList, items))
        return;
    const QStringList before = changed->singleSignals();
    document().undoStack().beginMacro(step);
    document().set(location(changed->index), changed->signalList, items, step);
    moveValues(before, changed->singleSignals());
    document().undoStack().endMacro();
}

void PortsPage::moveValues(const QStringList& before, const QStringList& after)
{
    for (MatchUnit* unit : qAsConst(standard()->matchUnits)) {
        if (unit->trigger != port())
            continue;
        const bool equality = unit->matchFunc == MatchEqual || unit->matchFunc == MatchNotEqual;
        const QChar filler = equality ? 'X' : '0';
        MatchUnit moved = *unit;
        moved.value0 = movedValue(unit->value0, before, after, filler);
        moved.value1 = movedValue(unit->value1, before, after, filler);
        document().set(location(unit->trigger->index), *unit, moved, tr("move values"));
    }
}

void PortsPage::addDataSignals()
{
    if (!port())
        return;
    PickSignalsDialog dialog(core()->signalList(), this);
    if (dialog.exec() == QDialog::Accepted)
        m_editor->insert(dialog.items(), tr("add data signals to T%1").arg(port()->index));
}
