// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_SETTINGS_H
#define APPS_OXA_EDITOR_WAVE_WAVE_SETTINGS_H

#include "wave_layout.h"

#include <QJsonObject>
#include <QMap>
#include <QObject>
#include <QTimer>

class Document;

/// How the waveforms of a configuration's cores are shown, shared by all views: the layout of their
/// rows and the sample clocks. Kept in the file CONFIGURATION.waves (docs: editor).
class WaveSettings : public QObject {
    Q_OBJECT

public:
    /// Follows `document`, when there is one, to its files.
    explicit WaveSettings(Document* document = nullptr, QObject* parent = nullptr);

    /// Writes what is not written yet.
    ~WaveSettings() override;

    /// Shows another configuration, whose file may not exist; empty: it has none yet.
    void open(const QString& configuration);

    /// The configuration was written to another file, which gets the same settings.
    void moveTo(const QString& configuration);

    QString configuration() const { return m_configuration; } ///< the file; empty: none yet

    /// The layout for the core with that index; empty: the usual one.
    const WaveEntries& rows(int core) const;
    void setRows(int core, const WaveEntries& rows);

    /// The same as an edit that can be undone.
    void editRows(int core, const WaveEntries& rows);
    /// Undoes the last edit of a core's rows; false when there is none.
    bool undoRows(int core);
    /// Does the last one that was undone again; false when there is none.
    bool redoRows(int core);

    /// The frequency of a core's sample clock in Hz: as the user entered it, else that of the
    /// configuration, else that of a stimulus. 0: unknown.
    double clock(int core) const;
    QString clockOrigin(int core) const; ///< where that is from, for the user

    void enterClock(int core, double hertz); ///< 0: as if the user had not entered any
    void setConfiguredClocks(const QMap<int, double>& clocks);
    void setStimulusClock(int core, double hertz);

    /// Why the settings cannot be kept, for the user; empty: they are.
    QString problem() const { return m_problem; }

    /// Writes what is not written yet; else that is done soon.
    void save();

Q_SIGNALS:
    void changed(); ///< rows, clocks or the problem

private:
    /// What the user set for a core.
    struct CoreSettings {
        WaveEntries rows;
        double clock = 0; // Hz
        std::vector<WaveEntries> undo; // rows before the edits, the last one at the end
        std::vector<WaveEntries> redo; // rows that were undone
    };

    using Steps = std::vector<WaveEntries> CoreSettings::*;

    bool readFile(QJsonObject& object);
    bool step(int core, Steps from, Steps to);
    void changeSoon();
    QJsonObject merged(QJsonObject object) const;

    QString m_configuration;
    QMap<int, CoreSettings> m_cores;
    QMap<int, double> m_configured; // clocks in Hz
    QMap<int, double> m_stimulus; // clocks in Hz
    QString m_problem;
    bool m_isUnsaved = false;
    QTimer m_saveTimer;
};

#endif
