// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "notificationsdata.h"

#include <QString>
#include <QStringList>

/// What the page says about single runs of the cron file.
namespace RunNotes
{

/// What is to be known before a run is edited, one text a line: whose it is, what its line says beside the options, and
/// which of its files are not what they seem.
QStringList of(const WarnquotaJob &run, const NotificationNotes &notes);

/// What is asked before a run that was read as `before` is applied as `after`. Empty when nothing gets lost.
QString question(const WarnquotaJob &before, const WarnquotaJob &after);

/// What cron refuses in the schedule of the run of that name; empty for one that it takes, and for an empty schedule.
QString refusal(const QString &name, const CronSchedule &schedule);

} // namespace RunNotes
