// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_PATIENCE_H
#define TESTS_SUPPORT_PATIENCE_H

#include <QProcess>
#include <QString>

/// How long a test waits for what has to come, in ms: enough for a machine with much other work.
/// Only a test that fails waits so long.
constexpr int kPatience = 600000;

/// The same in seconds, for programs.
inline QString patienceSeconds() { return QString::number(kPatience / 1000); }

/// Waits for the end of `process`.
inline bool finished(QProcess& process)
{
    const bool ended
        = process.waitForFinished(kPatience) || process.state() == QProcess::NotRunning;
    return ended && process.error() != QProcess::FailedToStart;
}

#endif
