#ifndef TESTS_FAULTS_KILLED_CHILD_H
#define TESTS_FAULTS_KILLED_CHILD_H

#include <functional>

enum class ChildEnd { Killed, Finished, NotTraced };

/// Runs `work` in a child process that is killed at its system call number `call`, counted from 0,
/// each once before and once behind what it does. `Finished`: it makes no so many calls.
ChildEnd killAtCall(int call, const std::function<void()>& work);

#endif
