// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shell.h"

/// Writes as somebody without rights of his own does: the user of that name, in the group of that name and no other.
namespace OrdinaryWrite
{
/// Appends to a file, or makes it, and waits until it is on the disk.
Shell::Result append(const QString &account, const QString &file, int kibibytes);
/// Makes empty files, whose names end with 1, 2, …
Shell::Result create(const QString &account, const QString &nameBegin, int count);

/// Whether it was refused for a limit.
bool isExceeded(const Shell::Result &writing);
} // namespace OrdinaryWrite
