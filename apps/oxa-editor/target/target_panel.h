// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_TARGET_TARGET_PANEL_H
#define APPS_OXA_EDITOR_TARGET_TARGET_PANEL_H

#include "target_job.h"

#include "oxa-editor/captures/capture_saver.h"
#include "oxa-editor/document.h"

#include <QHash>
#include <QWidget>

#include <optional>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QCheckBox;
class QTreeWidget;
class RepeatRows;
class TargetLink;
class WaveSettings;
class WaveView;

/// Captures from a running chip with the shown settings.
class TargetPanel : public QWidget {
    Q_OBJECT

public:
    TargetPanel(Document& document, WaveSettings& waves, CaptureHistory& history,
        CaptureSaver& saver, QWidget* parent = nullptr);

    /// A run, the start of OpenOCD for it, or `isSaving`.
    bool isRunning() const;
    /// The samples are being written to a file.
    bool isSaving() const { return m_saver.isRunning(); }
    WaveView* view() const { return m_view; }
    QTreeWidget* cores() const { return m_cores; }
    QListWidget* problems() const { return m_problems; }

    /// Finds the analyzer in the chip.
    void connectToChip() { start(false); }
    /// Arms the chosen cores; reads their samples when they have triggered.
    void arm() { start(true); }
    void force();
    void stop();

    /// There are samples, and nothing is running.
    bool canSave() const { return !isRunning() && m_record; }
    /// Asks whether to stop a run that may capture samples. False when the user does not want it.
    bool mayStop();
    /// Asks for a file, and writes the shown samples.
    void save();
    /// Writes the shown samples to the file `path`, in the format of its suffix.
    void saveTo(const QString& path, const OXA_CAPTURE::CaptureFileOptions& options = {});

Q_SIGNALS:
    void runningChanged();

private:
    QWidget* makeControls();
    QWidget* makeSamples();
    QPushButton* addButton(
        const QString& text, const QString& tip, void (TargetPanel::*act)(), QLayout& layout);
    void browse();
    void documentReplaced();
    void start(bool arm);
    bool plan(bool arm, TargetRequest& request);
    void linkEnded(const QString& reason);
    void runWaiting();
    void clearStates();
    QList<int> chosenCores() const;
    void showFound(const QList<FoundCore>& cores, const QString& builtFrom);
    void showProgress(const QStringList& texts);
    CaptureRecordPtr recordOf(const TargetResult& result, const QString& ended) const;
    void showSaved(const QString& path, const QString& error);
    void showLatest(const TargetResult& result);
    void takeResult(const TargetResult& result);
    void showResult(const TargetResult& result);
    QString endedText(const TargetResult& result) const;
    void showAge(bool isEarlier);
    void showWaveform();
    void showState();

    Document& m_document;
    const WaveSettings& m_waves;
    CaptureHistory& m_history;
    CaptureSaver& m_saver;
    TargetJob* m_job;
    QHash<QString, QString> m_builtFromOf; // by the document's path
    QList<int> m_armed; // positions of the cores that run
    QString m_asked; // of the last run
    QString m_askedFrom; // its configuration's path
    CaptureRecordPtr m_record; // that is shown; null without samples
    std::vector<int> m_places; // of its cores
    bool m_isArming = false; // the run may capture samples
    bool m_isFound = false; // the analyzer, in the last run
    bool m_isForeign = false; // the run began with another document
    std::optional<TargetRequest> m_waiting; // for OpenOCD
    TargetLink* m_link = nullptr;
    RepeatRows* m_repeat = nullptr;
    QLineEdit* m_builtFrom;
    QPushButton* m_connect = nullptr;
    QPushButton* m_arm = nullptr;
    QPushButton* m_force = nullptr;
    QPushButton* m_stop = nullptr;
    QPushButton* m_saveButton = nullptr;
    QTreeWidget* m_cores;
    QCheckBox* m_joint; // all cores on one axis
    QLabel* m_axis; // what that is
    QLabel* m_state;
    QListWidget* m_problems;
    QLabel* m_age;
    WaveView* m_view;
};

#endif
