// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cronjob.h"

/// What cron says of the numbers in a schedule. A table with one line that it refuses is ignored as a whole.
class CronSyntax
{
public:
    enum Field
    {
        Minute,
        Hour,
        DayOfMonth,
        Month,
        DayOfWeek,
        None,
    };

    /// The first field that cron refuses. Of fields with numbers, as the expert mode takes them: the names of months
    /// and days are not known here.
    static Field refusedField(const CronSchedule &schedule);
};
