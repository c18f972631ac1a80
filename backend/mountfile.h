// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/// The bytes of a mount table. Any thread, as all of this header.
struct MountFile
{
    bool isOpen = false;
    QByteArray bytes; ///< what could be read
    QString reason;   ///< why it could not be opened, or not be read to its end; empty when it was

    bool isWhole() const { return isOpen && reason.isEmpty(); }

    /// Regular files only: a pipe would be waited for, a folder has no lines.
    static MountFile read(const QString &path);
};

/// A line as the system's reader understands it, in the bytes of the file. A column that is missing is empty or 0.
struct MountColumns
{
    QByteArray fsName;
    QByteArray dir;
    QByteArray type;
    QByteArray opts;
    int freq = 0;
    int passno = 0;

    /// The first column as a text.
    QString spelling() const;
    /// Whether the first column can be a device. That of a bind mount is a folder, and "/home" may be what the name of
    /// a device ends with; and bytes that the text does not tell would be those of another device.
    bool canNameDevice() const;

    bool operator==(const MountColumns &other) const
    {
        return fsName == other.fsName && dir == other.dir && type == other.type && opts == other.opts &&
               freq == other.freq && passno == other.passno;
    }
};

/// A line of a mount table that is neither a comment nor blank.
struct MountLine
{
    int number = 0;                      ///< counted from 1, over all lines
    QByteArray text;                     ///< without its line end
    std::optional<MountColumns> columns; ///< none for what the reader keeps to itself, as an automounter's "ignore"
};

/// Lines may be of any length, and may end with a carriage return and a line feed, as "mount" takes them too.
QVector<MountLine> mountLines(const QByteArray &table);
