// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "warnquotajob.h"

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
CronJob build(const WarnquotaJob &job);

/// Whether a command that is parsed and built again still does what it did: it runs `warnquota`, with no options but
/// those that are picked out.
bool isKept(const QString &command);

} // namespace WarnquotaCommand
