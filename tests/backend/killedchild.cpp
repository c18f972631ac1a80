// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "killedchild.h"

#include <QtGlobal>

#include <csignal>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

bool killAtStop(int n, const std::function<void()> &work)
{
    const pid_t child = fork();
    if (child < 0)
        qFatal("fork() failed");
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP); // from here on the parent counts
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status))
        qFatal("The child cannot be traced");
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL);
    for (int stop = 0; stop < n; ++stop) {
        if (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0)
            qFatal("The child cannot go on");
        waitpid(child, &status, 0);
        if (!WIFSTOPPED(status))
            return false;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}
