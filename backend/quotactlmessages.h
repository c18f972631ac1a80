// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// What to tell the administrator of a quotactl() that failed with that errno.
QString quotaCtlMessage(int errorNumber);
