// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cronjob.h"

/// What cron thinks of a schedule. A table with one line that it refuses is ignored as a whole.
namespace CronSyntax
{

enum Field
{
    Minute,
    Hour,
    DayOfMonth,
    Month,
    DayOfWeek,
    None,
};

/// The first field that cron refuses.
Field refusedField(const CronSchedule &schedule);

} // namespace CronSyntax
