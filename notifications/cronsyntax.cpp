// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cronsyntax.h"

#include <QRegularExpression>
#include <QStringList>

#include <array>

namespace
{
struct Range
{
    QString CronSchedule::*field;
    int first;
    int last;
    const char *names; ///< of the numbers from the first on
};

constexpr std::array<Range, CronSyntax::None> ranges = {
    {{&CronSchedule::minute, 0, 59, ""},
     {&CronSchedule::hour, 0, 23, ""},
     {&CronSchedule::dayOfMonth, 1, 31, ""},
     {&CronSchedule::month, 1, 12, "jan feb mar apr may jun jul aug sep oct nov dec"},
     {&CronSchedule::dayOfWeek, 0, 7, "sun mon tue wed thu fri sat sun"}}}; // Sunday is 0 and 7

/// A number, or the name of one in capitals or small letters.
bool fits(const QString &word, const Range &range)
{
    if (QString::fromLatin1(range.names).split(QLatin1Char(' '), Qt::SkipEmptyParts).contains(word.toLower()))
        return true;
    bool isNumber = false;
    const int value = word.toInt(&isNumber);
    return isNumber && value >= range.first && value <= range.last;
}

bool isTaken(const QString &field, const Range &range)
{
    static const QRegularExpression start(QStringLiteral(R"(^(?:\*|([0-9A-Za-z]+)(-([0-9A-Za-z]*))?))"));
    static const QRegularExpression step(QStringLiteral(R"(^/0*[1-9][0-9]*(?![0-9A-Za-z]))"));
    const QStringList parts = field.split(QLatin1Char(','));
    for (const QString &part : parts) {
        const QRegularExpressionMatch match = start.match(part);
        const bool isAny = match.captured(0) == QLatin1String("*");
        const bool isSpan = !match.captured(2).isEmpty();
        if (!isAny && (!fits(match.captured(1), range) || (isSpan && !fits(match.captured(3), range))))
            return false;
        const QString rest = part.mid(match.capturedEnd());
        if (rest.startsWith(QLatin1Char('/'))) {
            if (!(isAny || isSpan) || !step.match(rest).hasMatch())
                return false;
        } else if (!rest.isEmpty()) {
            return true; // whatever follows in the field is not looked at
        }
    }
    return true;
}
} // namespace

CronSyntax::Field CronSyntax::refusedField(const CronSchedule &schedule)
{
    for (int field = Minute; field < None; ++field) {
        const Range &range = ranges[static_cast<std::size_t>(field)];
        if (!isTaken((schedule.*range.field).trimmed(), range))
            return static_cast<Field>(field);
    }
    return None;
}
