// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memorysize.h>
#include <timeperiod.h>

#include <QDateTime>
#include <QString>
#include <QtGlobal>

/// One account's quota on one device. A limit of 0 is no limit.
///
/// The hard limit stands before the soft one here; what is shown has soft before hard.
struct DeviceQuota
{
    MemorySize usedBlocks;
    MemorySize hardBlockLimit;
    MemorySize softBlockLimit;
    quint64 usedInodes = 0;
    quint64 hardInodeLimit = 0;
    quint64 softInodeLimit = 0;
    QDateTime inodesTimeToForce; ///< when the soft limit on files turns hard; invalid while no grace time runs
    QDateTime blocksTimeToForce; ///< the same for space
    TimePeriod inodeGracePeriod; ///< the device's, as is the next
    TimePeriod blockGracePeriod;
    QString deviceName;
    QString mountPoint;           ///< where it is mounted; empty while it is not
    QString filesystemType;       ///< the type under which the device is mounted
    bool quotaIsOn = false;       ///< this account is limited: never true while `kindIsOn` is false
    bool kindIsOn = false;        ///< the kernel enforces or counts this kind of quota on the device
    bool optionIsMounted = false; ///< the kind's option stands in "/etc/mtab"
    bool fileExists = false;      ///< the kind's quota file stands in the device's mount point
    bool optionInForce = false;   ///< always as `optionIsMounted`
};
