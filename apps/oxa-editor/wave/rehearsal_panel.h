// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_REHEARSAL_PANEL_H
#define APPS_OXA_EDITOR_WAVE_REHEARSAL_PANEL_H

#include "rehearsal.h"

#include "oxa-editor/document.h"

#include <QHash>
#include <QWidget>

#include <dev/device_db.h>

class QFileSystemWatcher;
class QLabel;
class QLineEdit;
class QListWidget;
class WaveSettings;
class WaveView;

/// Shows what a core would capture from a stimulus while its trigger is edited.
class RehearsalPanel : public QWidget {
    Q_OBJECT

public:
    RehearsalPanel(Document& document, WaveSettings& waves, QWidget* parent = nullptr);

    /// The core to rehearse; may be null.
    void setCore(const CorePtr& core);
    void setPart(const DEV::ChipInfo& part);

    /// The waveform's file; remembered for the document while the program runs.
    void setStimulus(const QString& path);
    QString stimulus() const;

    bool isBusy() const { return m_rehearsal->isBusy(); }
    WaveView* view() const { return m_view; }
    QListWidget* problems() const { return m_problems; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void layOut();
    void browse();
    void takeStimulus();
    void restoreStimulus();
    void rehearse();
    void show(const RehearsalResult& result);

    Document& m_document;
    CorePtr m_core;
    DEV::ChipInfo m_part;
    QHash<QString, QString> m_stimuli; // by the document's path
    Rehearsal* m_rehearsal;
    QFileSystemWatcher* m_watcher;
    QLineEdit* m_path;
    QLabel* m_state;
    QListWidget* m_problems;
    WaveView* m_view;
};

#endif
