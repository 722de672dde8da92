// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_VIEW_H
#define APPS_OXA_EDITOR_WAVE_WAVE_VIEW_H

#include "waveform.h"

#include <QWidget>

class GtkWave;
class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QTreeView;
class SaveJob;
class WaveCanvas;
class WaveModel;
class WaveRowMenu;
class WaveSettings;

/// Shows waveforms: the rows with their values at cursor A, and the samples beside them.
class WaveView : public QWidget {
    Q_OBJECT

public:
    /// `settings` are those of all views of a configuration, and outlive this; without, the view
    /// has its own.
    explicit WaveView(WaveSettings* settings = nullptr, QWidget* parent = nullptr);

    /// Shows `waveform`, never null, in the layout for its core. The user's choices (zoom, cursors)
    /// stay where they apply.
    void setWaveform(const WaveformPtr& waveform);

    /// Shows values by the names beside the configuration's file; none when it cannot be read.
    void setNamesOf(const QString& configuration);
    WaveformPtr waveform() const;
    /// Draws the samples pale, as those that are not the newest.
    void setDimmed(bool dimmed);

    QTreeView* rows() const { return m_rows; }
    WaveCanvas* canvas() const { return m_canvas; }

    /// The sample clock in Hz, for times; 0: unknown.
    double clock() const;

    /// Moves cursor A to the next (`step` 1) or previous (-1) change of the current row to the
    /// wanted value, or without one to any change.
    void find(int step);

    WaveRowMenu& rowMenu() const { return *m_rowMenu; }
    void copyPicture();

    /// Writes a picture of the visible samples with all rows as .svg or .png.
    void exportPicture(const QString& path);

    /// Writes the samples from A to B, C to D and so on, in the background, in the format of the
    /// suffix.
    void exportSpans(const QString& path);

    /// Opens the windows, or without windows all samples, in GTKWave.
    void openInGtkWave();

    void undoLayout(); ///< the last edit of the rows
    void redoLayout();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void layOut();
    void showSettings();
    void showClock();
    void showLayout();
    int core() const;
    QWidget* makeBar();
    void addZooms(QLayout& group);
    void addSearch(QLayout& group);
    QAction* addAction(const QString& text, const QString& tip, const QList<QKeySequence>& keys,
        const std::function<void()>& act);
    QMenu* makeMenu();
    void showCursors();
    void showTrigger();
    void zoomToWindow();
    void readClock();
    void say(const QString& text);
    void showRuler();
    void askForPicture();
    void askForSpans();

    WaveSettings* m_settings;
    WaveModel* m_model;
    QTreeView* m_rows;
    WaveCanvas* m_canvas;
    QSplitter* m_splitter;
    GtkWave* m_gtkWave;
    SaveJob* m_save;
    WaveRowMenu* m_rowMenu;
    QLineEdit* m_wanted;
    QLineEdit* m_filter;
    QLineEdit* m_clock;
    QLabel* m_problem;
    QLabel* m_state;
    QAction* m_timeRuler = nullptr;
};

#endif
