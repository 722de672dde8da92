// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_BUILD_PANEL_H
#define APPS_OXA_EDITOR_BUILD_PANEL_H

#include "build_job.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <dev/device_db.h>

class Document;
class FileViewer;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

/// Generates and synthesizes the shown configuration in the background, with progress, log and
/// stop.
class BuildPanel : public QWidget {
    Q_OBJECT

public:
    explicit BuildPanel(Document& document, QWidget* parent = nullptr);

    /// The part to build for; required for a build.
    void setPart(const DEV::ChipInfo& part) { m_part = part; }

    QString workDir() const;
    void setWorkDir(const QString& path);
    bool isRunning() const { return m_job->isRunning(); }
    QListWidget* log() const { return m_log; }

    void generate() { start(false); }
    void synthesize() { start(true); }
    void stop();

Q_SIGNALS:
    void runningChanged();
    void workDirChanged();
    void stageChanged(const QString& text); ///< of the run, or how it ended
    void partNeeded(); ///< the user has to choose a part first

private:
    void layOut();
    void browse();
    void start(bool synthesize);
    bool namesStayWords();
    bool mayEmptyWorkDir(const OXA::OxaArg& arg);
    bool writeSnapshot(OXA::OxaArg& arg);
    bool passesCheck(const OXA::BuildRun& build);
    void showProgress(const QString& stage, int percent);
    void showFinish(const OXA::BuildResult& result);
    QString stageAfter(const OXA::BuildResult& result) const;
    QString amountsText(const OXA_TOOL::AnalyzerAmounts& takes) const;
    void setStage(const QString& text);
    void say(const QString& line);
    void showState();
    void openPlace();

    Document& m_document;
    DEV::ChipInfo m_part;
    DEV::ChipInfo m_builtPart; // of the last run
    BuildJob* m_job;
    QElapsedTimer m_time; // of the run
    QTimer m_seconds;
    QString m_stageText;
    std::unique_ptr<QTemporaryDir> m_snapshot; // of the configuration, for the running job
    QLineEdit* m_workDir;
    QPushButton* m_generate;
    QPushButton* m_synthesize;
    QPushButton* m_stop;
    QProgressBar* m_progress;
    QLabel* m_stage;
    QListWidget* m_log;
    QPointer<FileViewer> m_viewer; // of the file opened last
};

#endif
