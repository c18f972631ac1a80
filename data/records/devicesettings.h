// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kindsettings.h"

#include <QString>
#include <QStringList>

/// The quota settings of one device.
struct DeviceSettings
{
    /// In `features`: the file system keeps quotas in itself. They are on without any mount option or quota file, and
    /// neither the switching programs nor the grace periods work on them.
    static QString quotaFeature() { return QStringLiteral("quota-feature"); }

    QString filesystemType; ///< the type under which the device is mounted; empty while it is not
    QString mountPoint;     ///< empty while it is not mounted
    quint64 size = 0;       ///< of the mounted file system, in bytes; 0 where it is not known
    KindSettings userSettings;
    KindSettings groupSettings;
    QStringList features; ///< facts of the device by fixed names, never shown as they stand
    QStringList failures; ///< what could not be read of this device, as told to the administrator
};
