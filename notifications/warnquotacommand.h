// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "warnquotajob.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The command line of `warnquota` in a cron job.
namespace WarnquotaCommand
{

QString defaultConfig();
QString defaultQuotaTab();
QString defaultAdminsFile();
/// The three of them, in this order.
QStringList defaultFiles();

/// Picks the options out of a job's command, whatever program that runs. No path of the result is empty, and at least
/// one of its flags is set.
WarnquotaJob parse(const CronJob &job);

/// The job with its command made anew. A path that is the default is not written.
CronJob build(const WarnquotaJob &run);

/// Whether a run that was read from a table says what its line says: nothing of it was edited.
bool isAsRead(const WarnquotaJob &run);
/// The line of a run in the table: the one that it was read from, or, where it was edited or made here, a new one.
QByteArray line(const WarnquotaJob &run);

/// What building the command of a job anew changes in it.
enum class Loss
{
    None,
    Detail, ///< it runs `warnquota`, and says more than the options that are picked out
    Program ///< it runs something else
};
Loss lossOf(const CronJob &job);

/// Whether the shell that runs a job opens this very file for this path: it is absolute, and none of its characters
/// means something to cron or to the shell.
bool isPlainPath(const QString &path);

} // namespace WarnquotaCommand
