#ifndef APPS_OXA_EDITOR_WAVE_GTKWAVE_H
#define APPS_OXA_EDITOR_WAVE_GTKWAVE_H

#include "save_job.h"
#include "waveform.h"

/// Starts GTKWave, which goes on by itself, as soon as a file for it is written in the background.
class GtkWave : public QObject {
    Q_OBJECT

public:
    explicit GtkWave(QObject* parent = nullptr);

    /// Gives a file up that is being written.
    ~GtkWave() override;

    /// Opens what was captured, or else all samples. Does nothing while a file is being written.
    void open(const Waveform& waveform, double clockHz);

Q_SIGNALS:
    void said(const QString& text); ///< what goes on, or why nothing does

private:
    bool makeFile();
    void start(const QString& error);

    QString m_program;
    QString m_path; // of the file
    std::unique_ptr<SaveJob> m_job;
};

#endif
