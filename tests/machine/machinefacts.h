// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>

#include <QHash>
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

/// One account's quota on one device, by `repquota`.
struct Account
{
    quint64 usedBytes = 0;
    quint64 softBytes = 0;
    quint64 hardBytes = 0;
    quint64 usedFiles = 0;
    quint64 softFiles = 0;
    quint64 hardFiles = 0;
    qint64 spaceForced = 0; ///< when the soft limit turns hard, in seconds since the epoch; 0 where no time runs
    qint64 filesForced = 0;
};

/// By name; "#1000" is an account without one. Who never had a file or a limit there may be missing.
using Accounts = QHash<QString, Account>;

/// A disk by the name that it has in this machine.
QString disk(const char *name);
/// The fields of the line in "/etc/fstab" for that mount point, the table's own spelling; none where it has none.
QStringList fstabLine(const char *mountPoint);
/// The devices of "/etc/fstab" that carry ext2, ext3 or ext4 by `blkid`, in the order of the table.
QStringList quotaDevices();
Device device(const QString &path);
/// None while the kind is off there.
Accounts accounts(QuotaKind kind, const QString &mountPoint);
} // namespace MachineFacts
