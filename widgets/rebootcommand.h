// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProcessEnvironment>

/// Asking the desktop's window manager to reboot the system.
namespace RebootCommand
{

/// This process's environment, but with the runtime folder of the user who raised its rights ("SUDO_UID"): that is
/// where the window manager is reached.
QProcessEnvironment environment();

/// Runs the command and waits for it, 30 s at most. How it ended is not looked at.
void run();

} // namespace RebootCommand
