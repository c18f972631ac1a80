// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localtimes.h"

#include "kernelquota.h"

#include <limits>

namespace
{

constexpr qint64 Day = 24 * 60 * 60;

/// No grace time that runs ends later: such a time is not worth a thought.
constexpr quint64 LastUsual = std::numeric_limits<quint32>::max();

} // namespace

QDateTime LocalTimes::at(quint64 seconds)
{
    if (seconds == 0 || seconds > LastUsual)
        return toTime(seconds);
    const auto moment = static_cast<qint64>(seconds);
    const std::optional<int> offset = offsetOn(moment / Day);
    if (!offset)
        return toTime(seconds);
    const QDateTime shown = QDateTime::fromSecsSinceEpoch(moment + *offset, Qt::UTC);
    return {shown.date(), shown.time(), Qt::LocalTime};
}

/// In seconds, where the clocks are left alone on that day, the day before and the day after it: then a time of the day
/// stands for one moment alone. Otherwise none.
std::optional<int> LocalTimes::offsetOn(qint64 day)
{
    const auto known = _offsets.constFind(day);
    if (known != _offsets.constEnd())
        return *known;
    const int offset = QDateTime::fromSecsSinceEpoch(day * Day).offsetFromUtc();
    for (const qint64 edge : {day - 1, day + 1, day + 2}) {
        if (QDateTime::fromSecsSinceEpoch(edge * Day).offsetFromUtc() != offset)
            return *_offsets.insert(day, std::nullopt);
    }
    return *_offsets.insert(day, offset);
}
