// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDeadlineTimer>
#include <QPointer>

class QProcess;

/// Asking the desktop's window manager to reboot the system.
class RebootCommand
{
public:
    /// Starts the command and returns. How it ends is not looked at; it is never killed, not even by the end of this
    /// process. While it runs, at most 30 s, another call does nothing.
    ///
    /// It gets this process's environment, but with the runtime folder of the user who raised its rights ("SUDO_UID"):
    /// that is where the window manager is reached.
    void run();
    bool isRunning() const;

private:
    QPointer<QProcess> _process; // owns itself
    QDeadlineTimer _wait;
};
