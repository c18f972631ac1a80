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
        Replaced,         ///< all of the new content is there, and on the disk
        NotOpened,        ///< no regular file, one that cannot be read, or nothing can be written beside it
        NotWritten,       ///< the new content or the file's attributes could not be written: no room, say
        ChangedMeanwhile, ///< the file no longer holds what the caller expects; nothing was replaced
    };

    End end = End::Replaced;
    /// The system's own text, without a path; empty when it was replaced or changed meanwhile. A save of somebody else
    /// that could not be put back is kept beside the file, and then the text tells where.
    QString reason;

    bool succeeded() const { return end == End::Replaced; }
};

/// Whose the new file is, and who may use it.
enum class FileRights
{
    OfOldFile, ///< owner, group, mode and extended attributes stay; a new file gets those that the process gives
    /// Root's, and written by nobody else: for a table that is passed over when others may write it. Others read a new
    /// one, and an old one if they could before.
    RootWritable,
};

/// Replaces a file as a whole, or makes it: at every moment, also when the process is killed or the machine stops,
/// either the old or the new content is there. One that is killed may leave files ".NAME.kra-new~" and
/// ".NAME.kra-lock~" beside it, which the next replacement removes.
///
/// Of all programs that use this function one at a time writes a file; the others wait for some seconds.
/// Regular files only: what lies behind a device or a pipe has no whole. A symbolic link stays, and what it points to
/// is replaced. Any thread.
KRA_EXPORT FileReplacement replaceFile(const QString &path, const QByteArray &content,
                                       FileRights rights = FileRights::OfOldFile);

/// The same, unless the file holds other bytes than the expected ones when the new content is about to take its place.
/// The caller read them, made the content of them, and starts anew at End::ChangedMeanwhile. A missing file holds none.
KRA_EXPORT FileReplacement replaceFile(const QString &path, const QByteArray &content, const QByteArray &expected,
                                       FileRights rights = FileRights::OfOldFile);
