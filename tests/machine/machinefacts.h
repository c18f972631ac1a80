// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

/// What this machine's own programs say about its quotas. They are asked, never the code under test.
namespace MachineFacts
{
struct Kind
{
    bool configured = false; ///< by the line in "/etc/fstab", as `findmnt` reads it
    bool inForce = false;    ///< by "/proc/mounts"
    bool on = false;         ///< by `quotaon -p`
    bool hasFile = false;    ///< by `stat` of the quota file below the mount point
    qint64 blockGrace = 0;   ///< seconds, by `repquota`; 0 where the kind is off
    qint64 inodeGrace = 0;
};

struct Device
{
    QString path;
    QString type; ///< by "/proc/mounts"
    QString mountPoint;
    Kind user;
    Kind group;
};

/// The devices of "/etc/fstab" that carry ext2, ext3 or ext4 by `blkid`, in the order of the table.
QStringList quotaDevices();
Device device(const QString &path);
} // namespace MachineFacts
