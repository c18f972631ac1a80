// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "crontable.h"

#include "crontabreader.h"
#include "warnquotacommand.h"
#include "wholefile.h"

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

QStringList CronTable::droppedLines(const QByteArray &table)
{
    QStringList dropped;
    const QList<QByteArray> lines = table.split('\n');
    for (const QByteArray &line : lines)
        if (!isKept(line))
            dropped.append(WholeFile::text(line));
    return dropped;
}
