// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_IP_BOARDS_BOARD_TARGET_H
#define TESTS_IP_BOARDS_BOARD_TARGET_H

#include "support/jtag_proxy.h"
#include "support/processes.h"

#include <QTemporaryDir>

/// The design examples/board/counter.v with an analyzer for a family of devices, in Icarus behind
/// the real OpenOCD with the configuration that was written for it.
///
/// Each step returns what went wrong; nothing when all is well.
class BoardTarget {
public:
    JtagProxy wires; ///< between OpenOCD and the pads
    QByteArray script; ///< of OpenOCD, before the configuration

    /// Makes a core of `samples`, and attaches it with `options` of `oxa attach`; what that printed
    /// is in the file "list".
    QString attach(int samples, const QStringList& options);
    /// Compiles `sources` with `module`, the design with its analyzer, and starts OpenOCD at it.
    QString start(const QString& module, const QStringList& sources);
    /// Looks at the analyzer, whose clock runs, at a third of TCK.
    QString probe();
    /// Captures when count is `value`, and compares every row with what the design does.
    QString capture(int value);

    /// Starts OpenOCD again, whose reset has to select another instruction than the last one, and
    /// shifts through BYPASS.
    QString bypass(int irLength);

    /// Runs a program in the directory.
    QString run(const QString& program, const QStringList& arguments);
    QString path(const QString& name) const { return m_dir.filePath(name); }
    const QString here = OXA_SOURCE_DIR "/tests/ip/boards/";
    static QString design() { return OXA_SOURCE_DIR "/examples/board/counter.v"; }

private:
    void startOpenOcd(const QString& commands);

    QTemporaryDir m_dir;
    QByteArray m_said; // by the last run
    int m_samples = 0;
    Service m_simulation;
    Service m_openocd;
    QByteArray m_port; // of the wires
    QString m_address;
};

#endif
