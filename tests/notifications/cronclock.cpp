// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cronclock.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{
constexpr std::array<int, 5> lowest = {0, 0, 1, 1, 0};
constexpr std::array<int, 5> highest = {59, 23, 31, 12, 7};

/// A month or a day of the week by the first three letters of its name; -1 for another word.
int named(const QString &word, std::size_t field)
{
    static const QStringList months =
        QStringLiteral("jan feb mar apr may jun jul aug sep oct nov dec").split(QLatin1Char(' '));
    static const QStringList weekdays = QStringLiteral("sun mon tue wed thu fri sat").split(QLatin1Char(' '));
    if (field == 3 && months.contains(word.toLower()))
        return months.indexOf(word.toLower()) + 1;
    return field == 4 ? weekdays.indexOf(word.toLower()) : -1;
}

/// One number of a field; none where it is not one of the field's.
std::optional<int> number(const QString &word, std::size_t field)
{
    bool isNumber = false;
    int value = word.toInt(&isNumber);
    if (!isNumber)
        value = named(word, field);
    if (value < lowest[field] || value > highest[field])
        return std::nullopt;
    return value;
}

/// One part of a list: a number, a range or the asterisk; the latter two with a step or without.
template<class Numbers>
bool addPart(Numbers &numbers, const QString &part, std::size_t field)
{
    const QString range = part.section(QLatin1Char('/'), 0, 0);
    const QString step = part.section(QLatin1Char('/'), 1);
    const bool isAll = range == QLatin1Char('*');
    const bool isRange = isAll || range.contains(QLatin1Char('-'));
    const std::optional<int> first = isAll ? lowest[field] : number(range.section(QLatin1Char('-'), 0, 0), field);
    const std::optional<int> last = isAll     ? highest[field]
                                    : isRange ? number(range.section(QLatin1Char('-'), 1), field)
                                              : first;
    const int width = part.contains(QLatin1Char('/')) ? step.toInt() : 1;
    if (!first || !last || *last < *first || width < 1 || (!isRange && width != 1))
        return false;
    for (int value = *first; value <= *last; value += width)
        numbers.set(static_cast<std::size_t>(value));
    return true;
}
} // namespace

std::optional<CronClock> CronClock::read(const QString &line)
{
    static const QRegularExpression words(QStringLiteral("^[ \\t]*") + QStringLiteral("([^ \\t]+)[ \\t]+").repeated(6) +
                                          QStringLiteral("(.+)$"));
    const QRegularExpressionMatch match = words.match(line);
    if (!match.hasMatch())
        return std::nullopt;
    CronClock clock;
    for (std::size_t field = 0; field < clock._fields.size(); ++field) {
        const QStringList parts = match.captured(static_cast<int>(field) + 1).split(QLatin1Char(','));
        for (const QString &part : parts)
            if (!addPart(clock._fields[field], part, field))
                return std::nullopt;
    }
    if (clock._fields[4].test(7)) // 0 and 7 are Sunday
        clock._fields[4].set(0);
    clock._anyDay = match.capturedView(3).contains(QLatin1Char('*'));
    clock._anyWeekday = match.capturedView(5).contains(QLatin1Char('*'));
    clock._user = match.captured(6);
    clock._command = match.captured(7);
    return clock;
}

bool CronClock::runsAt(const Minute &now) const
{
    const auto has = [this](std::size_t field, int value) {
        return _fields[field].test(static_cast<std::size_t>(value));
    };
    const bool day = has(2, now.day);
    const bool weekday = has(4, now.weekday);
    // Where both restrict the day, either may name it.
    const bool isDay = _anyDay || _anyWeekday ? day && weekday : day || weekday;
    return has(0, now.minute) && has(1, now.hour) && has(3, now.month) && isDay;
}
