// SPDX-License-Identifier: Apache-2.0
// The functions of the window for its docks.

#include "main_window.h"

#include "build_panel.h"
#include "captures/captures_panel.h"
#include "core_list.h"
#include "core_pages.h"
#include "design/design_panel.h"
#include "help_window.h"
#include "scrolling.h"
#include "target/target_panel.h"
#include "wave/rehearsal_panel.h"

#include <QDockWidget>
#include <QScrollArea>

namespace {

constexpr int kBuildLines = 14; // height of the build panel when it is first shown

}

void MainWindow::layOutDocks()
{
    fillDock(m_buildDock, "buildDock", m_build, "generate-and-synthesize");
    fillDock(m_rehearsalDock, "rehearsalDock", m_rehearsal, "rehearsal");
    fillDock(m_designDock, "designDock", m_design, "signals-of-the-design");
    fillDock(m_targetDock, "targetDock", m_target, "target");
    fillDock(m_capturesDock, "capturesDock", m_captures, "captures");
    addDockWidget(Qt::BottomDockWidgetArea, m_buildDock);
    m_buildDock->hide();
    // Hidden until `showDock`.
    for (QDockWidget* dock : {m_rehearsalDock, m_designDock, m_targetDock, m_capturesDock}) {
        dock->setParent(this);
        dock->hide();
    }
}

/// Puts a panel into a dock, with scroll bars when the dock is small. A panel that another dock
/// covers is hidden, or its Alt shortcuts would still be active.
void MainWindow::fillDock(
    QDockWidget* dock, const char* name, QWidget* panel, const char* helpAnchor)
{
    QScrollArea* area = scrolling(panel);
    area->setFocusProxy(panel);
    dock->setObjectName(name);
    dock->setWidget(area);
    setHelpAnchor(dock, helpAnchor);
    connect(dock, &QDockWidget::visibilityChanged, panel, &QWidget::setVisible);
}

/// Raises a dock, at least `height` high: at the bottom, in place of those that are there, unless
/// the user moved it.
void MainWindow::showDock(QDockWidget* dock, int height)
{
    leaveWelcome();
    const bool comes = !dock->isVisible();
    if (dockWidgetArea(dock) == Qt::NoDockWidgetArea && !dock->isFloating()) {
        addDockWidget(Qt::BottomDockWidgetArea, dock);
        for (QDockWidget* other :
            {m_buildDock, m_rehearsalDock, m_designDock, m_targetDock, m_capturesDock}) {
            if (other != dock && dockWidgetArea(other) == Qt::BottomDockWidgetArea)
                tabifyDockWidget(other, dock);
        }
    }
    dock->show();
    dock->raise();
    if (comes && !dock->isFloating() && dock->height() < height)
        resizeDocks({dock}, {height}, Qt::Vertical);
}

/// Raises a waveform or the design, with space for some rows.
void MainWindow::showLargeDock(QDockWidget* dock)
{
    showDock(dock, height() / 2);
    dock->widget()->setFocus(Qt::ShortcutFocusReason);
}

void MainWindow::showBuild() { showDock(m_buildDock, fontMetrics().height() * kBuildLines); }

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
