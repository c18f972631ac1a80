// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

/// The five time fields of a cron line, each as it stood in the line: leading blanks of the first one are kept.
struct CronSchedule
{
    QString minute;
    QString hour;
    QString dayOfMonth;
    QString month;
    QString dayOfWeek;
};

/// Fields are compared as text, as stored.
inline bool operator==(const CronSchedule &left, const CronSchedule &right)
{
    return left.minute == right.minute && left.hour == right.hour && left.dayOfMonth == right.dayOfMonth &&
           left.month == right.month && left.dayOfWeek == right.dayOfWeek;
}

/// One line of a system cron table. An empty minute marks a line that is no job.
struct CronJob
{
    CronSchedule schedule;
    QString user;
    QString command; ///< without the comment that ends the line
    QString comment; ///< without its "#"; empty for none

    QByteArray asRead = {}; ///< the line that it was read from, to the byte; empty for a job that was made here
};

/// The comment and the line take no part: two lines that differ only in them are the same job.
inline bool operator==(const CronJob &left, const CronJob &right)
{
    return left.schedule == right.schedule && left.user == right.user && left.command == right.command;
}
