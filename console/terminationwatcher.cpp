// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "terminationwatcher.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace
{
constexpr int watched[] = {SIGTERM, SIGINT, SIGHUP};

int ends[2] = {-1, -1}; // of the pipe from the handler, which may do little more than write

void handle(int /*signal*/)
{
    const char byte = 0;
    const int before = errno; // the interrupted thread may be about to ask why its last call failed
    // A full pipe has said enough.
    [[maybe_unused]] const ssize_t written = write(ends[1], &byte, 1);
    errno = before;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : watched)
        sigaction(signal, &action, nullptr);
}
} // namespace

TerminationWatcher::TerminationWatcher(QObject *parent)
    : QObject(parent)
{
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // out of descriptors: the signals keep their usual effect
    _notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(_notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (read(ends[0], bytes, sizeof bytes) > 0) {
        }
        Q_EMIT terminationRequested();
    });
    setHandler(&handle);
}

TerminationWatcher::~TerminationWatcher()
{
    if (!_notifier)
        return;
    setHandler(SIG_DFL);
    delete _notifier;
    for (int &end : ends) {
        close(end);
        end = -1;
    }
}
