// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Keeps what a cron table holds that is not written again.
namespace CronTableBackup
{

/// The lines of a table that are lost when its jobs are read, taken for runs of `warnquota` and written again. Blank
/// lines and the writer's own head lines are none.
QStringList droppedLines(const QByteArray &table);

/// Writes what a table holds to a new file under "/var/backups" that only root reads, as a setting in the table may be
/// a password; never beside the table: some crons would run the copy. Returns the path of the copy once it is on the
/// disk; empty when it could not be made.
QString keep(const QString &path, const QByteArray &table);

} // namespace CronTableBackup
