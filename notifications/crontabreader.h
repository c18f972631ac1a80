// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cronjob.h"

#include <QList>
#include <QObject>
#include <QString>

/// Reads and writes a system cron table of job lines. It understands plain job lines only: everything else in a table,
/// comments and settings among it, is passed over when reading and gone when the table is written.
class CrontabReader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// All fields are empty when the line is not a job.
    static CronJob parseJob(const QString &line);
    static QString formatJob(const CronJob &job);

    /// What parseSchedule() accepts, as a pattern.
    static QString schedulePattern();
    /// Of five fields alone, narrower than those of a job line. All fields are empty when the text does not fit.
    static CronSchedule parseSchedule(const QString &text);
    static QString formatSchedule(const CronSchedule &schedule);

    /// What writeJobs() puts above the jobs, line by line.
    static QStringList headLines();

    /// The jobs of a table, in its order; none when it cannot be read.
    QList<CronJob> readJobs(const QString &path);
    /// Replaces the table, as a file that cron accepts. False when that cannot be done, with the system's reason; then
    /// the old one stays.
    bool writeJobs(const QString &path, const QList<CronJob> &jobs, QString *reason = nullptr);
    /// Appends the jobs that the table does not hold yet. A table that is missing counts as an empty one.
    bool addJobs(const QString &path, const QList<CronJob> &jobs);
    /// Takes the jobs out that the table does *not* hold, which leaves all of its own: what this does is to write the
    /// table in the writer's own form.
    bool removeJobs(const QString &path, const QList<CronJob> &jobs);

Q_SIGNALS:
    void error(const QString &message);

private:
    QList<CronJob> readJobsSilently(const QString &path);
};
