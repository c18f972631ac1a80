// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <array>
#include <bitset>
#include <optional>

/// A minute by the clock on the wall.
struct Minute
{
    int minute;
    int hour;
    int day;
    int month;
    int weekday; ///< 0 is Sunday
};

/// When cron runs a line of a system table: the five fields read as crontab(5) tells it, apart from the code under
/// test.
class CronClock
{
public:
    /// None where the manual knows no such line.
    static std::optional<CronClock> read(const QString &line);

    bool runsAt(const Minute &now) const;
    const QString &user() const { return _user; }
    const QString &command() const { return _command; }

private:
    using Numbers = std::bitset<60>;

    std::array<Numbers, 5> _fields; // in the order of the line
    bool _anyDay = false;
    bool _anyWeekday = false;
    QString _user;
    QString _command;
};
