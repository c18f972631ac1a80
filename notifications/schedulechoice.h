// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cronjob.h"

#include <QDateTime>
#include <QRegularExpressionValidator>
#include <QString>

/// A schedule as the form shows it: one of the simple modes with a time, or a cron line.
struct ScheduleChoice
{
    enum class Mode
    {
        None,
        Monthly,
        Daily,
        Hourly,
        Expert,
    };

    /// How a schedule is shown on that day. What no simple mode can say is a line for experts.
    static ScheduleChoice of(const CronSchedule &schedule, const QDate &today);
    /// That day of today's month; where that month is too short, of the next one that has it.
    static QDate dateOfDay(int day, const QDate &today);

    /// All fields are empty when the line does not fit the grammar of the expert mode.
    CronSchedule schedule() const;

    Mode mode = Mode::None;
    QDateTime at; ///< in UTC, so that no change to or from summer time moves its numbers
    QString line; ///< of the expert mode; otherwise only what the schedule looked like
};

/// Whether both say the same: the parts of the time that the mode does not show are not compared.
bool operator==(const ScheduleChoice &left, const ScheduleChoice &right);

/// Accepts what the grammar of the expert mode accepts.
class ScheduleValidator : public QRegularExpressionValidator
{
    Q_OBJECT

public:
    explicit ScheduleValidator(QObject *parent = nullptr);

    /// Lenient: every text is at least Intermediate, so that a line that does not fit to begin with can be edited.
    void setLenient(bool lenient) { _isLenient = lenient; }
    State validate(QString &input, int &position) const override;

private:
    bool _isLenient = false;
};
