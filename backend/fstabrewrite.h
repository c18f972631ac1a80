// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

class BlkidTable;

// A table of file systems as it is here: lines of six columns parted by blanks. The first four are words, in whatever
// encoding their author used, with blanks and backslashes in octal; the last two are numbers. What a line means is what
// the system's reader makes of it, one line at a time (mountfile.h).
//
// A rewrite gives the lines of one device other options. All words of all other lines and columns stay byte for byte,
// and so does each option that the device had before. What goes: comments, blank lines, and how the columns stood
// apart; a line without options gets "defaults", one without numbers two zeros. What would read in any other way than
// before, or could not be mounted, is refused with a text.
//
// It is safe in this order only: the bytes are read, rewritten, and replaced where they are still the same. FstabWriter
// does so, again when they are not; nothing that was read of the table before that counts.

/// What is to become of the options of a device's lines.
struct OptionChange
{
    enum class Step
    {
        Add,     ///< the kind's option, at the end, where it is missing
        Remove,  ///< every copy of the kind's option
        Replace, ///< by `options`
    };
    Step step;
    QuotaKind kind = UserQuota;
    QStringList options = {};
};

/// What the table is to hold instead, or why it must stay as it is.
struct FstabRewrite
{
    QByteArray content;  ///< the old one where nothing has to change
    QString refusal;     ///< for the administrator; empty when `content` can be written
    bool matters = true; ///< of a refusal: whether the option stands there that was to be removed
};

/// Rewrites the whole text of an "/etc/fstab" for a device: each of its lines that resolves to it, by itself.
FstabRewrite rewriteFstab(const QByteArray &table, const QString &device, const OptionChange &change,
                          const BlkidTable &blkid);
