// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_TERMINAL_H
#define TESTS_SUPPORT_TERMINAL_H

#include "support/processes.h"

#include <pty.h>
#include <unistd.h>

/// A program on a terminal of its own, where it shows how far it is.
class Terminal : public Service {
public:
    static constexpr char kNone[] = "this machine has no pseudo-terminals";

    /// A minimal root file system often has no /dev/pts.
    static bool exists()
    {
        int master = -1;
        int slave = -1;
        const bool ok = openpty(&master, &slave, nullptr, nullptr, nullptr) == 0;
        ::close(master);
        ::close(slave);
        return ok;
    }

    /// Runs a shell's command, which takes the shell's place: a shell that stays gets Ctrl-C, too,
    /// and ends with a status of its own. `before` is for the shell itself.
    void run(const QString& command, const QString& before = QString())
    {
        const QString line = before + "exec " + command;
        start("env", {"SHELL=/bin/sh", "script", "-qefc", line, "/dev/null"});
    }

    /// Presses Ctrl-C.
    void interrupt()
    {
        write("\x03");
        waitForBytesWritten(kPatience);
    }
};

#endif
