// SPDX-License-Identifier: Apache-2.0
// The functions of the window for the user's design.

#include "main_window.h"

#include "core_list.h"
#include "core_page.h"
#include "design/design_panel.h"

#include <QDockWidget>
#include <QTabWidget>

void MainWindow::connectDesign()
{
    connect(m_design, &DesignPanel::dataWanted, this,
        [this](const QList<OXA::SignalItem>& items) { insert(Page::Signals, items); });
    connect(m_design, &DesignPanel::portWanted, this,
        [this](const QList<OXA::SignalItem>& items) { insert(Page::Ports, items); });
    connect(m_design, &DesignPanel::clockWanted, this, [this](const QString& name) {
        const CorePtr core = m_cores->current();
        if (!core)
            return;
        showPage(Page::Capture);
        m_document.set(
            {core, Page::Capture}, core->sampleClock(), name, tr("change the sample clock"));
    });
    connect(&m_document, &Document::designChanged, this, [this] {
        for (int i = 0; i < m_tabs->count(); ++i)
            static_cast<CorePage*>(m_tabs->widget(i))->contentChanged();
        m_checkTimer.start();
    });
}

void MainWindow::showDesign()
{
    showLargeDock(m_designDock);
    m_design->begin();
}

/// Shows the page and inserts signals of the design there.
void MainWindow::insert(Page page, const QList<OXA::SignalItem>& items)
{
    showPage(page);
    static_cast<CorePage*>(m_tabs->currentWidget())->insert(items);
}
