// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "timeperiod.h"

#include <QObject>
#include <QStringList>

#include <limits>

namespace
{

constexpr quint32 Minute = 60;
constexpr quint32 Hour = 60 * Minute;
constexpr quint32 Day = 24 * Hour;
constexpr quint32 Week = 7 * Day;

} // namespace

TimePeriod::TimePeriod(quint32 secondCount)
    : seconds(secondCount % Minute)
    , minutes(secondCount % Hour / Minute)
    , hours(secondCount % Day / Hour)
    , days(secondCount % Week / Day)
    , weeks(secondCount / Week)
{
    QStringList parts;
    const auto addPart = [&parts](quint32 count, const QString &word) {
        if (count != 0)
            parts.append(QStringLiteral("%1 %2").arg(QString::number(count), word));
    };
    addPart(weeks, QObject::tr("weeks"));
    addPart(days, QObject::tr("days"));
    addPart(hours, QObject::tr("hours"));
    addPart(minutes, QObject::tr("minutes"));
    addPart(seconds, QObject::tr("seconds"));
    text = parts.join(QLatin1Char(' '));
}

TimePeriod TimePeriod::ofSeconds(quint64 secondCount)
{
    constexpr quint64 Longest = std::numeric_limits<quint32>::max();
    return TimePeriod(static_cast<quint32>(qMin(secondCount, Longest)));
}

qint64 TimePeriod::toSeconds() const
{
    return qint64(weeks) * Week + qint64(days) * Day + qint64(hours) * Hour + qint64(minutes) * Minute +
           qint64(seconds);
}
