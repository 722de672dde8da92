// SPDX-License-Identifier: Apache-2.0
#include "signals_page.h"

#include "signal_editor.h"

#include <QTreeView>
#include <QVBoxLayout>

SignalsPage::SignalsPage(Document& document, QWidget* parent)
    : CorePage(document, Page::Signals, parent)
    , m_editor(new SignalEditor(true))
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_editor);
    setEntry(m_editor->view());
    connect(m_editor, &SignalEditor::edited, this,
        [this](const QList<OXA::SignalItem>& items, const QString& step) {
            if (core())
                this->document().setSignals(location(), items, step);
        });
    connect(m_editor, &SignalEditor::designWanted, this, &CorePage::designWanted);
}

void SignalsPage::revealNamedIn(const QString& text) { m_editor->selectNamedIn(text); }

void SignalsPage::insert(const QList<OXA::SignalItem>& items)
{
    m_editor->insert(items, tr("add signals of the design"));
}

void SignalsPage::refresh()
{
    m_editor->setDesign(document().design());
    m_editor->setItems(core() ? core()->signalList() : QList<OXA::SignalItem>());
}
