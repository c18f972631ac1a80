// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "crontablebackup.h"

#include "crontabreader.h"
#include "warnquotacommand.h"
#include "wholefile.h"

#include <filereplacement.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace
{
bool isKept(const QByteArray &bytes)
{
    const QString line = WholeFile::text(bytes);
    if (line.trimmed().isEmpty() || CrontabReader::headLines().contains(line))
        return true;
    const CronJob job = CrontabReader::parseJob(line);
    return !job.schedule.minute.isEmpty() && WarnquotaCommand::isKept(job.command) && line.toUtf8() == bytes;
}
} // namespace

QStringList CronTableBackup::droppedLines(const QByteArray &table)
{
    QStringList dropped;
    const QList<QByteArray> lines = table.split('\n');
    for (const QByteArray &line : lines)
        if (!isKept(line))
            dropped.append(WholeFile::text(line));
    return dropped;
}

QString CronTableBackup::keep(const QString &path, const QByteArray &table)
{
    const QDir folder(QStringLiteral("/var/backups"));
    if (!folder.mkpath(QStringLiteral(".")))
        return {};
    const QString name = QStringLiteral("%1.%2").arg(
        QFileInfo(path).fileName(), QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-hhmmss")));
    QString target = folder.filePath(name);
    for (int i = 1; QFileInfo::exists(target); ++i)
        target = folder.filePath(QStringLiteral("%1.%2").arg(name).arg(i));
    return replaceFile(target, table, FileRights::RootOnly).succeeded() ? target : QString();
}
