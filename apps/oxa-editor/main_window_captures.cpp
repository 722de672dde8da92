// SPDX-License-Identifier: Apache-2.0
// The functions of the window for captures.

#include "main_window.h"

#include "captures/captures_panel.h"
#include "recent_files.h"
#include "target/target_panel.h"
#include "wave/rehearsal_panel.h"
#include "wave/wave_view.h"

#include <QFileDialog>
#include <QFileInfo>

void MainWindow::connectCaptures()
{
    connect(m_recentCaptures, &RecentFiles::chosen, this, &MainWindow::openCapture);
    connect(m_captures, &CapturesPanel::opened, m_recentCaptures, &RecentFiles::add);
    connect(m_captures, &CapturesPanel::chooseWanted, this, &MainWindow::chooseCapture);
    connect(m_captures, &CapturesPanel::stimulusWanted, this, [this](const QString& path) {
        m_rehearsal->setStimulus(path);
        showLargeDock(m_rehearsalDock);
    });
}

void MainWindow::showCaptures() { showLargeDock(m_capturesDock); }

void MainWindow::chooseCapture()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Capture"),
        QFileInfo(m_document.path()).path(),
        tr("Captures and waveforms (*.vcd *.vcd.gz *.fst *.csv *.sr);;All files (*)"));
    if (!path.isEmpty())
        openCapture(path);
}

void MainWindow::openCapture(const QString& path)
{
    showCaptures();
    m_captures->open(QFileInfo(path).absoluteFilePath());
}

bool MainWindow::mayLoseSamples()
{
    return m_saver->mayLose(m_history->unsaved(), m_target->view()->clock());
}
