// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_TARGET_OPENOCD_PROCESS_H
#define APPS_OXA_EDITOR_TARGET_OPENOCD_PROCESS_H

#include <QObject>
#include <QProcess>
#include <QTimer>

/// An OpenOCD that this program starts, and ends with this object.
class OpenOcdProcess : public QObject {
    Q_OBJECT

public:
    explicit OpenOcdProcess(QObject* parent = nullptr);
    ~OpenOcdProcess() override;

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Of its Tcl server, "127.0.0.1:PORT"; empty until it listens.
    const QString& address() const { return m_address; }

    /// Starts OpenOCD with the configuration file; its Tcl server gets a free port, unless the file
    /// names one. `ready` or `ended` follows.
    void start(const QString& configuration);
    void end();

Q_SIGNALS:
    void said(const QString& text); ///< what OpenOCD writes, a line or several
    void ready(); ///< its Tcl server listens
    void ended(const QString& reason); ///< empty: by `end`

private:
    void read();
    void finish();

    QProcess m_process;
    QTimer m_patience; // for its Tcl server
    QTimer m_endPatience; // for its end
    QString m_address;
    QString m_line; // the last one, as far as it was read
    QString m_error; // the last one that OpenOCD wrote
    QString m_reason; // why it is being ended
    bool m_isEnding = false;
};

#endif
