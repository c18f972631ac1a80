// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "crontabreader.h"

#include "wholefile.h"

#include <filereplacement.h>

#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStringList>

namespace
{
const QString &blank()
{
    static const QString text = QStringLiteral(" ");
    return text;
}

CronSchedule scheduleOf(const QRegularExpressionMatch &match)
{
    return {match.captured(1), match.captured(2), match.captured(3), match.captured(4), match.captured(5)};
}
} // namespace

CronJob CrontabReader::parseJob(const QString &line)
{
    // ",-\\" is a range on purpose, from the comma to the backslash: it lets steps and names of months and days
    // through.
    static const QRegularExpression pattern(
        QStringLiteral(R"((^\s*[\d\*,-\\]+)\s+([\d\*,-\\]+)\s+([\d\*,-\\]+)\s+([\d\*,-\\]+)\s+([\d\*,-\\]+))"
                       R"(\s+([\w\d]+)\s+(.+?)(#+(.*))?$)"));
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch())
        return {};
    return {scheduleOf(match), match.captured(6), match.captured(7), match.captured(9)};
}

QString CrontabReader::formatJob(const CronJob &job)
{
    const QString line = QStringList({formatSchedule(job.schedule), job.user, job.command}).join(blank());
    return job.comment.isEmpty() ? line : line + QStringLiteral(" #") + job.comment;
}

QString CrontabReader::schedulePattern()
{
    return QStringLiteral(R"(^\s*([\d\/*,-]+)\s+([\d\/*,-]+)\s+([\d\/*,-]+)\s+([\d\/*,-]+)\s+([\d\/*,-]+)\s*$)");
}

CronSchedule CrontabReader::parseSchedule(const QString &text)
{
    static const QRegularExpression pattern(schedulePattern());
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() ? scheduleOf(match) : CronSchedule();
}

QString CrontabReader::formatSchedule(const CronSchedule &schedule)
{
    return QStringList({schedule.minute, schedule.hour, schedule.dayOfMonth, schedule.month, schedule.dayOfWeek})
        .join(blank());
}

QStringList CrontabReader::headLines()
{
    return {QStringLiteral("# Cron job for quota notifications"), QStringLiteral("# Dont edit this file"),
            QStringLiteral("PATH=/usr/sbin")};
}

QList<CronJob> CrontabReader::readJobs(const QString &path)
{
    const std::optional<QByteArray> bytes = WholeFile::read(path);
    if (!bytes) {
        Q_EMIT error(tr("Can'n open %1 file").arg(path));
        return {};
    }
    QList<CronJob> jobs;
    const QStringList lines = WholeFile::text(*bytes).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const CronJob job = parseJob(line);
        if (!job.schedule.minute.isEmpty())
            jobs.append(job);
    }
    return jobs;
}

bool CrontabReader::writeJobs(const QString &path, const QList<CronJob> &jobs, QString *reason)
{
    QStringList lines = headLines();
    for (const CronJob &job : jobs)
        lines.append(formatJob(job));
    const QString text = lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    const FileReplacement written = replaceFile(path, text.toUtf8(), FileRights::RootWritable);
    if (reason)
        *reason = written.reason;
    if (!written.succeeded())
        Q_EMIT error(tr("Can'n create %1 file").arg(path));
    return written.succeeded();
}

bool CrontabReader::addJobs(const QString &path, const QList<CronJob> &jobs)
{
    QList<CronJob> all = readJobsSilently(path);
    for (const CronJob &job : jobs)
        if (!all.contains(job))
            all.append(job);
    return writeJobs(path, all);
}

bool CrontabReader::removeJobs(const QString &path, const QList<CronJob> &jobs)
{
    QList<CronJob> all = readJobsSilently(path);
    for (const CronJob &job : jobs)
        if (!all.contains(job)) // the test is meant this way round
            all.removeAll(job);
    return writeJobs(path, all);
}

QList<CronJob> CrontabReader::readJobsSilently(const QString &path)
{
    const QSignalBlocker silent(this);
    return readJobs(path);
}
