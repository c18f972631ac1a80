// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "scheduletimeedit.h"

#include "schedulechoice.h"

namespace
{
constexpr int longestMonth = 31;
} // namespace

ScheduleTimeEdit::ScheduleTimeEdit(QWidget *parent)
    : QDateTimeEdit(parent)
{
    setTimeSpec(Qt::UTC);
}

void ScheduleTimeEdit::showSections(const QString &format)
{
    if (format == displayFormat())
        return;
    setDisplayFormat(format);
    clearMinimumDateTime(); // a format without a day has narrowed the range to the date of the moment
    clearMaximumDateTime();
}

void ScheduleTimeEdit::stepBy(int steps)
{
    if (!stepsDayAlone()) {
        QDateTimeEdit::stepBy(steps);
        return;
    }
    const int day = qBound(1, date().day() + steps, longestMonth);
    setDate(ScheduleChoice::dateOfDay(day, QDate::currentDate()));
    setSelectedSection(DaySection);
}

QValidator::State ScheduleTimeEdit::validate(QString &input, int &position) const
{
    if (showsDayAlone()) {
        if (input.startsWith(QLatin1String("3 ")))
            return QValidator::Intermediate; // there may be more to come, even in February
        if (dayAndTime(input).isValid())
            return QValidator::Acceptable;
    }
    return QDateTimeEdit::validate(input, position);
}

QDateTime ScheduleTimeEdit::dateTimeFromText(const QString &text) const
{
    const QDateTime typed = showsDayAlone() ? dayAndTime(text) : QDateTime();
    return typed.isValid() ? typed : QDateTimeEdit::dateTimeFromText(text);
}

QAbstractSpinBox::StepEnabled ScheduleTimeEdit::stepEnabled() const
{
    if (!stepsDayAlone())
        return QDateTimeEdit::stepEnabled();
    StepEnabled steps = StepNone;
    steps.setFlag(StepUpEnabled, date().day() < longestMonth);
    steps.setFlag(StepDownEnabled, date().day() > 1);
    return steps;
}

bool ScheduleTimeEdit::showsDayAlone() const
{
    return displayedSections().testFlag(DaySection) && !displayedSections().testFlag(MonthSection);
}

QDateTime ScheduleTimeEdit::dayAndTime(const QString &text) const
{
    // A year that begins with a month of 31 days: every day and time that there can be is read in it.
    const QDateTime read =
        QDateTime::fromString(QStringLiteral("2000 01 ") + text, QStringLiteral("yyyy MM ") + displayFormat());
    if (!read.isValid())
        return {};
    return {ScheduleChoice::dateOfDay(read.date().day(), QDate::currentDate()), read.time(), Qt::UTC};
}
