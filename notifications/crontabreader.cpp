// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "crontabreader.h"

#include "wholefile.h"

#include <QRegularExpression>
#include <QSignalBlocker>

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

QList<CronJob> CrontabReader::jobsIn(const QByteArray &table)
{
    QList<CronJob> jobs;
    const QByteArrayList lines = table.split('\n');
    for (const QByteArray &line : lines) {
        CronJob job = parseJob(WholeFile::text(line));
        if (job.schedule.minute.isEmpty())
            continue;
        job.asRead = line;
        jobs.append(job);
    }
    return jobs;
}

std::optional<QByteArray> CrontabReader::readTable(const QString &path)
{
    std::optional<QByteArray> table = WholeFile::read(path);
    if (!table)
        Q_EMIT error(tr("Can'n open %1 file").arg(path));
    return table;
}

QList<CronJob> CrontabReader::readJobs(const QString &path)
{
    return jobsIn(readTable(path).value_or(QByteArray()));
}

FileReplacement CrontabReader::writeLines(const QString &path, const QByteArrayList &lines,
                                          const std::optional<QByteArray> &expected)
{
    QByteArray table;
    const QStringList head = headLines();
    for (const QString &line : head)
        table += line.toUtf8() + '\n';
    for (const QByteArray &line : lines)
        table += line + '\n';
    FileReplacement written = expected ? replaceFile(path, table, *expected, FileRights::RootWritable)
                                       : replaceFile(path, table, FileRights::RootWritable);
    if (!written.succeeded() && written.end != FileReplacement::End::ChangedMeanwhile)
        Q_EMIT error(tr("Can'n create %1 file").arg(path));
    return written;
}

bool CrontabReader::writeJobs(const QString &path, const QList<CronJob> &jobs)
{
    QByteArrayList lines;
    for (const CronJob &job : jobs)
        lines.append(formatJob(job).toUtf8());
    return writeLines(path, lines).succeeded();
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
