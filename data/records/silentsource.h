// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Key of `params` in the record of one account and in that of all devices: a QString, the source that did not tell
/// which devices there are ("blkid", "/etc/fstab"). Empty where all did: then a device that is missing is not there.
inline QString silentSourceKey()
{
    return QStringLiteral("silentSource");
}
