// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cronjob.h"

/// A cron line read as a run of `warnquota`, with its options picked out.
struct WarnquotaJob
{
    CronJob job;
    QString quotaTab;   ///< path of the table that describes the devices
    QString config;     ///< path of warnquota's configuration
    QString adminsFile; ///< path of the table of the groups' administrators
    bool users = false; ///< warn users
    bool groups = false;
};

/// All that a run says is compared, but not the line that it was read from.
inline bool operator==(const WarnquotaJob &left, const WarnquotaJob &right)
{
    return left.job == right.job && left.job.comment == right.job.comment && left.quotaTab == right.quotaTab &&
           left.config == right.config && left.adminsFile == right.adminsFile && left.users == right.users &&
           left.groups == right.groups;
}
