// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_FAULTS_KILLED_CHILD_H
#define TESTS_FAULTS_KILLED_CHILD_H

#include <csignal>
#include <functional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

enum class ChildEnd { Killed, Finished, NotTraced };

[[noreturn]] inline void beChild(const std::function<void()>& work)
{
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(1);
    raise(SIGSTOP);
    work();
    _exit(0);
}

/// Runs `work` in a child process that is killed at its system call number `call`, counted from 0,
/// each once before and once behind what it does. `Finished`: it makes no so many calls.
inline ChildEnd killAtCall(int call, const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        beChild(work);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status))
        return ChildEnd::NotTraced;
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL);
    for (int stop = 0; stop <= call && WIFSTOPPED(status); ++stop) {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    if (!WIFSTOPPED(status))
        return ChildEnd::Finished;
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return ChildEnd::Killed;
}

#endif
