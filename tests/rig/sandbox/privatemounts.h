// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

/// Mounts that only this process and its children see. System calls only: no program is run, so that no stand-in can
/// ever serve them. Each ends the process with a text and code 3 when the system refuses.
namespace PrivateMounts
{

/// Ends the process: "The sandbox cannot …: reason".
[[noreturn]] void fail(const std::string &what, int error);

/// Moves this process into a mount namespace of its own; where its rights do not reach, into a user namespace too, in
/// which it is root. There must be no second thread yet.
void enterNamespace();

/// Mounts an empty file system in memory; it goes with the namespace.
void mountMemory(const std::string &folder);

/// Shows one folder in the place of another, and makes sure that it does.
void replaceFolder(const std::string &shown, const std::string &place);

} // namespace PrivateMounts
