// SPDX-License-Identifier: Apache-2.0
// The functions of the window for captures.

#include "main_window.h"

#include "captures/captures_panel.h"
#include "captures/sample_menu.h"
#include "core_list.h"
#include "core_pages.h"
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
    for (WaveView* view : {m_rehearsal->view(), m_target->view(), m_captures->view()})
        offerSamples(*view);
}

/// Lets values in a waveform become triggers and signals of the core that they were captured by,
/// else of the current one.
void MainWindow::offerSamples(WaveView& view)
{
    const auto coreOf = [this, &view](const WaveRow& row) {
        const Waveform& waveform = *view.waveform();
        const int index = waveform.joint ? row.core : waveform.captured.index;
        for (const CorePtr& own : m_document.cores()) {
            if (&view != m_rehearsal->view() && own->index() == index)
                return own;
        }
        return m_cores->current();
    };
    auto* menu = new SampleMenu(m_document, view, coreOf);
    connect(menu, &SampleMenu::edited, this, &MainWindow::showPlace);
    connect(menu, &SampleMenu::dataWanted, this,
        [this](const CorePtr& core, const QList<OXA::SignalItem>& items) {
            m_cores->setCurrent(core);
            m_pages->insert(Page::Signals, items);
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

bool MainWindow::mayLoseSamples() { return m_saver->mayLose(m_history->unsaved()); }
