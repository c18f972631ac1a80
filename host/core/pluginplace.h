// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Whether a process that runs as root may load code from a file or a folder.
namespace PluginPlace
{

/// Why another user could put code there; empty when nobody but root can. The path is a canonical one, so that what
/// was looked at is what is loaded.
///
/// The file or folder itself, and every folder on the way to it, must belong to root and be writable by nobody else.
/// A folder on the way may be open to all when it is sticky (/tmp): what stands in it is replaced by its owner only,
/// and that is looked at too.
QString whyUnsafe(const QString &canonicalPath);

/// Whether the path is in the build tree that the running program was started from: a program in bin/ beside a
/// CMakeCache.txt. Who could put a plug-in there could as well put another program there.
bool isInOwnBuildTree(const QString &canonicalPath);

} // namespace PluginPlace
