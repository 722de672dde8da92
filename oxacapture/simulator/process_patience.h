// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_PROCESS_PATIENCE_H
#define OXACAPTURE_SIMULATOR_PROCESS_PATIENCE_H

#include <QDeadlineTimer>

namespace OXA_CAPTURE {

/// How long to wait for the answer of a process.
///
/// The wait lasts as long as the process computes, up to a limit of its own processor time, so
/// that it does not depend on the load of the machine.
class ProcessPatience {
public:
    /// Starts a wait for the process `pid`.
    void begin(qint64 pid);

    bool lasts();

private:
    qint64 m_pid = 0;
    qint64 m_begun = 0; // its processor time then, ns
    qint64 m_seen = 0; // when it was last read
    QDeadlineTimer m_standstill;
};

}

#endif
