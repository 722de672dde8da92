// SPDX-License-Identifier: Apache-2.0
// The functions of the window for its docks.

#include "main_window.h"

#include "core_list.h"
#include "core_pages.h"
#include "design/design_panel.h"

#include <QDockWidget>
#include <QScrollArea>

/// Puts a panel into a dock, with scroll bars when the dock is small. A panel that another dock
/// covers is hidden, or its Alt shortcuts would still be active.
void MainWindow::fillDock(QDockWidget* dock, const char* name, QWidget* panel)
{
    auto* area = new QScrollArea;
    area->setWidget(panel);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // focus scrolls to the panel's fields
    area->setFocusProxy(panel);
    dock->setObjectName(name);
    dock->setWidget(area);
    connect(dock, &QDockWidget::visibilityChanged, panel, &QWidget::setVisible);
}

/// Raises a waveform or the design, with space for some rows: in place of the build panel unless
/// the user moved it.
void MainWindow::showLargeDock(QDockWidget* dock)
{
    const bool comes = !dock->isVisible();
    if (dockWidgetArea(dock) == Qt::NoDockWidgetArea && !dock->isFloating()) {
        addDockWidget(Qt::BottomDockWidgetArea, dock);
        tabifyDockWidget(m_buildDock, dock);
    }
    dock->show();
    dock->raise();
    if (comes && !dock->isFloating() && dock->height() < height() / 2)
        resizeDocks({dock}, {height() / 2}, Qt::Vertical);
    dock->widget()->setFocus(Qt::ShortcutFocusReason);
}

void MainWindow::connectDesign()
{
    connect(m_design, &DesignPanel::dataWanted, this,
        [this](const QList<OXA::SignalItem>& items) { m_pages->insert(Page::Signals, items); });
    connect(m_design, &DesignPanel::portWanted, this,
        [this](const QList<OXA::SignalItem>& items) { m_pages->insert(Page::Ports, items); });
    connect(m_design, &DesignPanel::clockWanted, this, [this](const QString& name) {
        const CorePtr core = m_cores->current();
        if (!core)
            return;
        m_pages->showPage(Page::Capture);
        m_document.set(
            {core, Page::Capture}, core->sampleClock(), name, tr("change the sample clock"));
    });
    connect(&m_document, &Document::designChanged, this, [this] {
        m_pages->contentChanged();
        m_checkTimer.start();
    });
}

void MainWindow::showDesign()
{
    showLargeDock(m_designDock);
    m_design->begin();
}
