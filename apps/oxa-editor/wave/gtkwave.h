// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_GTKWAVE_H
#define APPS_OXA_EDITOR_WAVE_GTKWAVE_H

#include "save_job.h"
#include "waveform.h"

/// Writes a file in the background, then starts GTKWave, which runs independently.
class GtkWave : public QObject {
    Q_OBJECT

public:
    explicit GtkWave(QObject* parent = nullptr);

    /// Stops writing a file.
    ~GtkWave() override;

    /// Opens the windows, or without windows all samples. Does nothing while a file is written.
    void open(const Waveform& waveform, double clockHz);

Q_SIGNALS:
    void said(const QString& text); ///< progress, or an error

private:
    bool makeFile();
    void start(const QString& error);

    QString m_program;
    QString m_path; // of the file
    std::unique_ptr<SaveJob> m_job;
};

#endif
