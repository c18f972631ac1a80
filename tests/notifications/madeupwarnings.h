// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <crontabreader.h>
#include <notificationsdata.h>
#include <warnquotacommand.h>

#include <QStringList>

/// Records of quota warnings as a read would bring them.
namespace MadeUpWarnings
{
inline const QString config = QStringLiteral("/etc/warnquota.conf");
inline const QString quotaTab = QStringLiteral("/etc/quotatab");
inline const QString adminsFile = QStringLiteral("/etc/quotagrpadmins");

/// Of a cron file with these job lines, and of the three files that every machine has.
inline NotificationsData record(const QStringList &lines)
{
    NotificationsData data;
    for (const QString &line : lines)
        data.jobs.append(WarnquotaCommand::parse(CrontabReader::parseJob(line)));
    data.files.insert(config, QStringLiteral("MAIL_CMD = \"/usr/sbin/sendmail -t\"\nFROM = \"root@localhost\"\n"));
    data.files.insert(quotaTab, QStringLiteral("/dev/vda1:This is your home folder\n"));
    data.files.insert(adminsFile, QStringLiteral("staff: anna\n"));
    return data;
}

inline QString line(const WarnquotaJob &job)
{
    return CrontabReader::formatJob(WarnquotaCommand::build(job));
}
} // namespace MadeUpWarnings
