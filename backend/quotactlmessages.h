// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

/// What to tell the administrator of a quotactl() that failed with that errno.
QString quotaCtlMessage(int errorNumber);

/// The same for a failure on that device, in lines: where it is the disk that fails, a second one says how.
QStringList quotaCtlMessages(const QString &device, int errorNumber);
