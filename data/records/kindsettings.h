// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <timeperiod.h>

#include <QString>

/// The settings of one kind of quota, user or group, on one device.
struct KindSettings
{
    QString device;                ///< its path, the special file of the kernel's and the programs' calls
    bool optionInForce = false;    ///< the kind's option stands in "/etc/mtab"
    bool optionConfigured = false; ///< the kind's option stands in "/etc/fstab"
    bool quotaOn = false;          ///< as read: the kind is on; handed to an update: the wish that it be on
    bool fileExists = false;       ///< the kind's quota file stands in the device's mount point
    QString fileName;              ///< of the quota file, where a mount option can name another than the usual
    TimePeriod blockGrace;         ///< for space; zero unless the kind is on
    TimePeriod inodeGrace;         ///< for files; zero unless the kind is on
};
