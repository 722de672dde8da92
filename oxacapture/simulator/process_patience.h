#ifndef OXACAPTURE_SIMULATOR_PROCESS_PATIENCE_H
#define OXACAPTURE_SIMULATOR_PROCESS_PATIENCE_H

#include <QDeadlineTimer>

namespace OXA_CAPTURE {

/// Patience with a process that is to answer.
///
/// It lasts as long as the process computes, up to a limit of its own processor time: what other
/// work on the machine takes from it does not count.
class ProcessPatience {
public:
    /// Begins anew, for the process `pid`.
    void begin(qint64 pid);

    bool lasts();

private:
    qint64 m_pid = 0;
    qint64 m_begun = 0; // its processor time then, ns
    qint64 m_seen = 0; // at the last look
    QDeadlineTimer m_standstill;
};

}

#endif
