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

/// Of a cron file with these job lines, and of the three files that every computer has.
inline NotificationsData record(const QStringList &lines)
{
    NotificationsData data;
    const QByteArray table = lines.join(QLatin1Char('\n')).toUtf8();
    const QList<CronJob> jobs = CrontabReader::jobsIn(table);
    for (const CronJob &job : jobs)
        data.jobs.append(WarnquotaCommand::parse(job));
    data.files.insert(config, QStringLiteral("MAIL_CMD = \"/usr/sbin/sendmail -t\"\nFROM = \"root@localhost\"\n"));
    data.files.insert(quotaTab, QStringLiteral("/dev/vda1:This is your home folder\n"));
    data.files.insert(adminsFile, QStringLiteral("staff: anna\n"));
    data.asRead = {table, data.files};
    return data;
}

inline QString line(const WarnquotaJob &run)
{
    return QString::fromUtf8(WarnquotaCommand::line(run));
}

/// The paths of the texts that were edited.
inline QStringList editedFiles(const NotificationsData &data)
{
    QStringList paths;
    for (auto file = data.files.cbegin(); file != data.files.cend(); ++file)
        if (data.asRead->files.value(file.key()) != file.value())
            paths.append(file.key());
    return paths;
}
} // namespace MadeUpWarnings
