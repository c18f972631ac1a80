// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QByteArray>
#include <QString>

/// How the replacement of a file ended.
struct KRA_EXPORT FileReplacement
{
    enum class End
    {
        Replaced,   ///< all of the new content is there, and on the disk
        NotOpened,  ///< no regular file, one that cannot be read, or nothing can be written beside it
        NotWritten, ///< the new content or the file's attributes could not be written: no room, say
    };

    End end = End::Replaced;
    QString reason; ///< the system's; empty when it was replaced

    bool succeeded() const { return end == End::Replaced; }
};

/// Whose the new file is, and who may use it.
enum class FileRights
{
    OfOldFile,    ///< owner, group, mode and extended attributes stay; a new file gets those that the process gives
    RootWritable, ///< root's, mode 0644, whatever it was: for a table that is passed over when others may write it
    RootOnly,     ///< root's, mode 0600: for a copy of what not everybody may be meant to read
};

/// Replaces a file as a whole, or makes it: at every moment, also when the process is killed or the machine stops,
/// either the old or the new content is there. A file "NAME.XXXXXX" beside it may be left over then.
///
/// Regular files only: what lies behind a device or a pipe has no whole. A symbolic link stays, and what it points to
/// is replaced. Any thread.
KRA_EXPORT FileReplacement replaceFile(const QString &path, const QByteArray &content,
                                       FileRights rights = FileRights::OfOldFile);
