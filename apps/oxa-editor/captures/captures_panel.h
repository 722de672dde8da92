// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_CAPTURES_PANEL_H
#define APPS_OXA_EDITOR_CAPTURES_CAPTURES_PANEL_H

#include "capture_saver.h"
#include "comparison.h"
#include "open_job.h"

#include "oxa-editor/document.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QTreeView;
class WaveSettings;
class WaveView;

/// Shows the captures of this session, and compares two of them.
class CapturesPanel : public QWidget {
    Q_OBJECT

public:
    CapturesPanel(const Document& document, WaveSettings& waves, CaptureHistory& history,
        CaptureSaver& saver, QWidget* parent = nullptr);

    /// Reads the capture or waveform `path` in the background, and shows it.
    void open(const QString& path);
    bool isOpening() const { return m_job->isRunning(); }

    WaveView* view() const { return m_view; }
    QTreeView* list() const { return m_list; }

    /// Moves cursor A to the next (`step` 1) or previous (-1) difference.
    void showDifference(int step);

Q_SIGNALS:
    void chooseWanted(); ///< a file is to be chosen and opened
    void opened(const QString& path);
    void stimulusWanted(const QString& path);

private:
    QWidget* makeControls();
    QPushButton* addButton(
        const QString& text, const QString& tip, const std::function<void()>& act, QLayout& layout);
    void showOpened(const CaptureRecordPtr& record, const QString& path, const QString& error);
    QList<CaptureRecordPtr> chosen() const;
    void save();
    void remove();
    void showChosen();
    void showCore();
    void compare(const CaptureRecord& a, const CaptureRecord& b);
    void showState();

    const Document& m_document;
    const WaveSettings& m_waves;
    CaptureHistory& m_history;
    CaptureSaver& m_saver;
    OpenJob* m_job;
    Comparison m_comparison;
    QTreeView* m_list;
    QComboBox* m_cores;
    QLabel* m_state;
    WaveView* m_view;
    QPushButton* m_save = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_rehearse = nullptr;
    QPushButton* m_stop = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
};

#endif
