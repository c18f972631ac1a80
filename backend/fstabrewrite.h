// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

/// What "/etc/fstab" is to hold instead of what it holds, or why it must stay as it is.
struct FstabRewrite
{
    QByteArray content;
    QString refusal; ///< for the administrator; empty when `content` can be written
};

/// Gives the first line of the device the mount options, in the whole text of an "/etc/fstab". `resolve` tells the path
/// of the device that a line is for; it may be empty.
///
/// Comments and blank lines go and the columns are parted by two blanks. Every other byte of the fields stays, whatever
/// the encoding, and so do the bytes of each option that the device had before. What cannot be written back such that
/// it reads the same is refused, as is a table in which no line is the device's.
FstabRewrite rewriteFstab(const QByteArray &table, const QString &device, const QStringList &options,
                          const std::function<QString(const QString &spec)> &resolve);
