// SPDX-License-Identifier: Apache-2.0
// The functions of the window for files.

#include "main_window.h"

#include "build_panel.h"
#include "core_pages.h"
#include "design/design_panel.h"
#include "example_copy.h"
#include "message_bar.h"
#include "recent_files.h"
#include "target/target_panel.h"

#include "oxautils/model/shown_text.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QTimer>

namespace {

constexpr char kSuffix[] = "oxa";

QString fileFilter()
{
    return MainWindow::tr("Analyzer configurations (*.%1);;All files (*)").arg(kSuffix);
}

bool isCaptureName(const QString& path)
{
    static const QStringList suffixes {"vcd", "gz", "fst", "csv", "sr"};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

/// The dragged file; empty when it is not exactly one file.
QString fileIn(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

}

/// Applies the text that is being typed, as leaving its field would.
void MainWindow::finishEdit()
{
    if (QWidget* focus = focusWidget()) {
        focus->clearFocus();
        focus->setFocus();
    }
}

void MainWindow::newDocument(OXA::OxaMode mode)
{
    if (mayReplaceDocument())
        m_document.create(mode);
}

void MainWindow::chooseFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open"), QFileInfo(m_document.path()).path(), fileFilter());
    if (!path.isEmpty())
        open(path);
}

void MainWindow::beginWithDesign()
{
    if (!mayReplaceDocument())
        return;
    m_document.create(OXA::Standard);
    m_pages->showPage(Page::Signals);
    showDesign();
    m_design->addSources();
}

void MainWindow::openExample()
{
    const QString directory
        = QFileDialog::getExistingDirectory(this, tr("Copy the Example into"), QDir::homePath());
    QString configuration;
    QString error;
    if (directory.isEmpty())
        return;
    if (copyExample(directory, configuration, &error))
        open(configuration);
    else
        QMessageBox::critical(this, tr("Cannot Copy"), OXA::shownLines(error));
}

bool MainWindow::open(const QString& path)
{
    QString error;
    QStringList warnings;
    if (!mayReplaceDocument())
        return false;
    if (!m_document.load(path, warnings, &error)) {
        QMessageBox::critical(this, tr("Cannot Open"), OXA::shownLines(error));
        return false;
    }
    m_recent->add(m_document.path());
    if (!warnings.isEmpty())
        m_message->showMessage(warnings.join('\n'),
            {
                {tr("&Close"), {}}
        });
    return true;
}

void MainWindow::reload()
{
    QString error;
    QStringList warnings;
    const QString path = m_document.path();
    if (!m_target->mayStop())
        return showFileChange(true);
    if (!m_document.load(path, warnings, &error))
        QMessageBox::critical(this, tr("Cannot Open"), OXA::shownLines(error));
    else if (!warnings.isEmpty())
        m_message->showMessage(warnings.join('\n'),
            {
                {tr("&Close"), {}}
        });
}

bool MainWindow::save()
{
    finishEdit();
    return m_document.path().isEmpty() ? saveAs() : saveTo(m_document.path());
}

bool MainWindow::saveAs()
{
    finishEdit();
    QFileDialog dialog(this, tr("Save As"), QFileInfo(m_document.path()).path(), fileFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kSuffix);
    if (!m_document.path().isEmpty())
        dialog.selectFile(m_document.path());
    return dialog.exec() == QDialog::Accepted && saveTo(dialog.selectedFiles().value(0));
}

bool MainWindow::saveTo(const QString& path)
{
    const bool overwritesOthers
        = path == m_document.path() && m_document.isFileChanged() && QFileInfo::exists(path);
    if (overwritesOthers
        && QMessageBox::question(this, tr("Overwrite?"),
               tr("Another program changed %1 since it was read. Overwrite its changes?")
                   .arg(QFileInfo(path).fileName()),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            != QMessageBox::Yes)
        return false;
    QString error;
    if (!m_document.save(path, &error)) {
        QMessageBox::critical(this, tr("Cannot Save"), OXA::shownLines(error));
        return false;
    }
    m_recent->add(m_document.path());
    m_message->hide();
    if (!error.isEmpty())
        m_message->showMessage(OXA::shownLines(error),
            {
                {tr("&Close"), {}}
        });
    return true;
}

/// Asks what to do with unsaved changes. False: the user cancelled.
bool MainWindow::mayLoseChanges()
{
    finishEdit();
    if (!m_document.isModified())
        return true;
    const auto answer = QMessageBox::warning(this, tr("Save Changes?"),
        tr("%1 has changes that are not saved.").arg(fileName()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

/// A run belongs to the configuration that it began with; samples stay in the history.
bool MainWindow::mayReplaceDocument() { return mayLoseChanges() && m_target->mayStop(); }

bool MainWindow::mayStopRuns()
{
    if (!m_build->isRunning() && !m_target->isRunning())
        return true;
    const QString question = m_target->isSaving()
        ? tr("The samples are still being saved. Stop saving, leave the file unchanged and quit?")
        : m_target->isRunning()
        ? tr("A run is in progress. Stop it and quit? Samples that are not saved are lost.")
        : tr("A run is in progress. Stop it and quit?");
    return QMessageBox::question(this, tr("Stop the Run?"), question) == QMessageBox::Yes;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    // During a run the target panel cannot save; the question about the run names the loss.
    const bool goes
        = mayLoseChanges() && (m_target->isRunning() || mayLoseSamples()) && mayStopRuns();
    event->setAccepted(goes);
    if (!goes)
        return;
    m_build->stop();
    m_target->stop();
    QSettings settings;
    settings.setValue("window/geometry", saveGeometry());
    settings.setValue("window/state", saveState());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!fileIn(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString path = fileIn(event->mimeData());
    event->acceptProposedAction();
    // The source of the drag waits for the end of this event, and `open` may show a question.
    QTimer::singleShot(0, this, [this, path] {
        if (isCaptureName(path))
            openCapture(path);
        else
            open(path);
    });
}
