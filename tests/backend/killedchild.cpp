// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "killedchild.h"

#include <QtGlobal>

#include <cerrno>
#include <csignal>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// The copy at its n-th stop; -1 when it had ended before.
pid_t stoppedAt(int n, const std::function<void()> &work)
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
            return -1;
    }
    return child;
}

} // namespace

bool killAtStop(int n, const std::function<void()> &work)
{
    const pid_t child = stoppedAt(n, work);
    if (child < 0)
        return false;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    return true;
}

bool interruptAtStop(int n, const std::function<void()> &work, const std::function<void()> &interruption)
{
    const pid_t child = stoppedAt(n, work);
    if (child < 0)
        return false;
    interruption();
    ptrace(PTRACE_DETACH, child, nullptr, nullptr);
    waitpid(child, nullptr, 0);
    return true;
}

void doAtOnce(const std::vector<std::function<void()>> &works)
{
    int start[2] = {};
    if (pipe(start) != 0)
        qFatal("pipe() failed");
    std::vector<pid_t> children;
    for (const std::function<void()> &work : works) {
        const pid_t child = fork();
        if (child < 0)
            qFatal("fork() failed");
        if (child == 0) {
            close(start[1]);
            char none = 0;
            if (read(start[0], &none, 1) == 0) // until all have begun
                work();
            _exit(0);
        }
        children.push_back(child);
    }
    close(start[0]);
    close(start[1]);
    for (const pid_t child : children) {
        int status = 0;
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) { // another child has ended, say
        }
        if (status != 0)
            qFatal("A child ended with status %d", status);
    }
}
