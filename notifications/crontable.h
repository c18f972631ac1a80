// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QStringList>

/// What a cron table holds besides the runs of `warnquota`.
namespace CronTable
{

/// The lines of a table that are lost when its jobs are read, taken for runs of `warnquota` and written again. Blank
/// lines and the writer's own head lines are none.
QStringList droppedLines(const QByteArray &table);

} // namespace CronTable
