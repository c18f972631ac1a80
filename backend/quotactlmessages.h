// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

class Reporter;

/// What to tell the administrator of a quotactl() that failed with that errno.
QString quotaCtlMessage(int errorNumber);

/// The same for a failure on that device, in two lines: the second one names the device and what the system calls the
/// failure, since the first alone fits any of several disks.
QStringList quotaCtlMessages(const QString &device, int errorNumber);

/// Reports those lines one by one.
void reportQuotaCtlFailure(Reporter &reporter, const QString &device, int errorNumber);
