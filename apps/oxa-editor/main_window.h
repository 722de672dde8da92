// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_MAIN_WINDOW_H
#define APPS_OXA_EDITOR_MAIN_WINDOW_H

#include "document.h"

#include <QMainWindow>
#include <QTimer>

namespace OXA {
struct Problem;
}
class BuildPanel;
class CaptureHistory;
class CaptureSaver;
class CapturesPanel;
class CoreList;
class CorePages;
class CostPanel;
class DesignPanel;
class FileWatch;
class MessageBar;
class PartChoice;
class ProblemsPanel;
class QDockWidget;
class QStackedWidget;
class RecentFiles;
class RehearsalPanel;
class TargetPanel;
class WaveSettings;
class WaveView;
class WelcomePage;

/// The window: one configuration, the pages of its cores, its problems and its resources.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Opens the file `path`, after a question about unsaved changes and samples. False when the
    /// user kept the old configuration, or when the file could not be read, which is reported.
    bool open(const QString& path);

    Document& document() { return m_document; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void layOut();
    QWidget* makeSide();
    void makeActions();
    void makeFileMenu();
    void makeEditMenu();
    void makeBuildMenu();
    void makeTargetMenu();
    void makeViewMenu();
    void makeHelpMenu();
    void connectParts();
    void connectDesign();
    void connectCaptures();
    void offerSamples(WaveView& view);

    void newDocument(OXA::OxaMode mode);
    void chooseFile();
    void chooseCapture();
    void openCapture(const QString& path);
    void beginWithDesign();
    void openExample();
    bool save();
    bool saveAs();
    bool saveTo(const QString& path);
    bool mayLoseChanges();
    bool mayReplaceDocument();
    bool mayLoseSamples();
    bool mayStopRuns();
    void finishEdit();
    void step(void (QUndoStack::*go)());

    void fillDock(QDockWidget* dock, const char* name, QWidget* panel, const char* helpAnchor);
    void layOutDocks();
    void showDock(QDockWidget* dock, int height);
    void showLargeDock(QDockWidget* dock);
    void showBuild();
    void showDesign();
    void showCaptures();
    void showDocument();
    void showWelcome();
    void leaveWelcome();
    void showAbout();
    void showCore();
    void showChange(const Location& location);
    void showPlace(const Location& location);
    void showProblem(const OXA::Problem& problem);
    void showTitle();
    void showFileChange(bool exists);
    void reload();
    void updateChecks();
    void choosePart();
    QString fileName() const;
    QString partSetting() const;
    QString workDirSetting() const;
    void restoreFileSettings();

    Document m_document;
    CoreList* m_cores;
    QStackedWidget* m_content; // the welcome page, or the configuration
    WelcomePage* m_welcome;
    CorePages* m_pages;
    QStackedWidget* m_middle; // the pages, or a hint when there is no core
    MessageBar* m_message;
    ProblemsPanel* m_problems;
    PartChoice* m_part;
    CostPanel* m_cost;
    BuildPanel* m_build;
    QDockWidget* m_buildDock;
    WaveSettings* m_waves;
    RehearsalPanel* m_rehearsal;
    QDockWidget* m_rehearsalDock;
    DesignPanel* m_design;
    QDockWidget* m_designDock;
    CaptureHistory* m_history;
    CaptureSaver* m_saver;
    TargetPanel* m_target;
    QDockWidget* m_targetDock;
    CapturesPanel* m_captures;
    QDockWidget* m_capturesDock;
    RecentFiles* m_recent;
    RecentFiles* m_recentCaptures;
    FileWatch* m_watch;
    QTimer m_checkTimer; // updates problems and cost after an edit
};

#endif
