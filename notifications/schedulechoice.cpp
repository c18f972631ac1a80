// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "schedulechoice.h"

#include "crontabreader.h"

#include <QRegularExpression>

#include <array>

namespace
{
/// A mode that has a pattern, with the places of its numbers in it; 0 for a number that it does not hold.
struct SimpleMode
{
    ScheduleChoice::Mode mode;
    QRegularExpression pattern;
    int minute;
    int hour;
    int day;
};

const std::array<SimpleMode, 3> &simpleModes()
{
    using Mode = ScheduleChoice::Mode;
    static const std::array<SimpleMode, 3> modes = {{
        {Mode::Monthly,
         QRegularExpression(
             QStringLiteral(R"(^([1-5]?[0-9])\s+(2[0-3]|[0-1]?[0-9])\s+(3[01]|[12][0-9]|[1-9])\s+\*\s+\*$)")),
         1, 2, 3},
        {Mode::Daily, QRegularExpression(QStringLiteral(R"(^([1-5]?[0-9])\s+(2[0-3]|[0-1]?[0-9])\s+\*\s+\*\s+\*$)")), 1,
         2, 0},
        {Mode::Hourly, QRegularExpression(QStringLiteral(R"(^([0-9]|[1-5][0-9])\s+\*\s+\*\s+\*\s+\*$)")), 1, 0, 0},
    }};
    return modes;
}

int number(const QRegularExpressionMatch &match, int place)
{
    return place == 0 ? 0 : match.capturedView(place).toInt();
}
} // namespace

ScheduleChoice ScheduleChoice::of(const CronSchedule &schedule, const QDate &today)
{
    const QString line = CrontabReader::formatSchedule(schedule);
    for (const SimpleMode &simple : simpleModes()) {
        const QRegularExpressionMatch match = simple.pattern.match(line);
        if (!match.hasMatch())
            continue;
        const QDate date = dateOfDay(simple.day == 0 ? 1 : number(match, simple.day), today);
        const QTime time(number(match, simple.hour), number(match, simple.minute));
        return {simple.mode, QDateTime(date, time, Qt::UTC), line};
    }
    return {Mode::Expert, QDateTime(dateOfDay(1, today), QTime(0, 0), Qt::UTC), line};
}

QDate ScheduleChoice::dateOfDay(int day, const QDate &today)
{
    QDate month(today.year(), today.month(), 1);
    while (month.daysInMonth() < day)
        month = month.addMonths(1);
    return month.addDays(day - 1);
}

CronSchedule ScheduleChoice::schedule() const
{
    if (mode == Mode::Expert)
        return CrontabReader::parseSchedule(line);
    const QString any = QStringLiteral("*");
    CronSchedule result = {any, any, any, any, any};
    if (mode != Mode::None)
        result.minute = QString::number(at.time().minute());
    if (mode == Mode::Daily || mode == Mode::Monthly)
        result.hour = QString::number(at.time().hour());
    if (mode == Mode::Monthly)
        result.dayOfMonth = QString::number(at.date().day());
    return result;
}

bool operator==(const ScheduleChoice &left, const ScheduleChoice &right)
{
    if (left.mode != right.mode)
        return false;
    return left.mode == ScheduleChoice::Mode::Expert ? left.line == right.line : left.schedule() == right.schedule();
}

ScheduleValidator::ScheduleValidator(QObject *parent)
    : QRegularExpressionValidator(QRegularExpression(CrontabReader::schedulePattern()), parent)
{}

QValidator::State ScheduleValidator::validate(QString &input, int &position) const
{
    const State state = QRegularExpressionValidator::validate(input, position);
    return state == Invalid && _isLenient ? Intermediate : state;
}
