// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cronjob.h"

#include <filereplacement.h>

#include <QByteArrayList>
#include <QList>
#include <QObject>
#include <QStringList>

#include <optional>

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

    /// What a written table begins with, line by line.
    static QStringList headLines();

    /// The jobs of a table, in its order, each with the line that it stands in.
    static QList<CronJob> jobsIn(const QByteArray &table);

    /// The bytes of a table; none when it cannot be read.
    std::optional<QByteArray> readTable(const QString &path);
    /// The jobs of a table; none when it cannot be read.
    QList<CronJob> readJobs(const QString &path);
    /// Replaces the table by the head and these lines, as a file that cron accepts. The old one stays when that fails;
    /// also, which is no error, where it does not hold the expected bytes.
    FileReplacement writeLines(const QString &path, const QByteArrayList &lines,
                               const std::optional<QByteArray> &expected = {});
    /// The same with formatted jobs. False when it fails.
    bool writeJobs(const QString &path, const QList<CronJob> &jobs);
    /// Appends the jobs that the table does not hold yet. A table that is missing counts as an empty one.
    bool addJobs(const QString &path, const QList<CronJob> &jobs);
    /// Removes the jobs that it does *not* hold, so none of its own. The effect is a table
    /// in the writer's own form.
    bool removeJobs(const QString &path, const QList<CronJob> &jobs);

Q_SIGNALS:
    void error(const QString &message);

private:
    QList<CronJob> readJobsSilently(const QString &path);
};
