// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_TARGET_TARGET_LINK_H
#define APPS_OXA_EDITOR_TARGET_TARGET_LINK_H

#include "openocd_process.h"

class QFormLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

/// The fields for the link to the chip: a running OpenOCD, one to be started, or a serial port.
class TargetLink : public QObject {
    Q_OBJECT

public:
    /// Adds its rows to `form`.
    TargetLink(QFormLayout& form, QObject* parent);

    QLineEdit* addressField() const { return m_address; }
    /// What OpenOCD writes; hidden until it is wanted, or OpenOCD has ended by itself.
    QPlainTextEdit* log() const { return m_log; }

    /// Of the OpenOCD that was started, or the one in the field.
    QString address() const;
    QString tap() const;

    /// OpenOCD has to be started first.
    bool needsStart() const;
    /// Starts OpenOCD; `ready` or `ended` follows.
    void start();
    bool isStarting() const { return m_openocd.isRunning() && m_openocd.address().isEmpty(); }
    /// Ends the OpenOCD that was started.
    void end() { m_openocd.end(); }

    /// Saves what is entered for the next start of the program.
    void remember() const;

Q_SIGNALS:
    void connectWanted();
    void ready();
    void ended(const QString& reason); ///< of OpenOCD; empty: by `end`

private:
    void layOut(QFormLayout& form);
    void connectParts();
    void browse();
    void showState();

    OpenOcdProcess m_openocd;
    QLineEdit* m_address;
    QLineEdit* m_tap;
    QLineEdit* m_configuration;
    QPushButton* m_end;
    QPushButton* m_output;
    QPlainTextEdit* m_log;
};

#endif
