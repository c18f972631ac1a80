// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTime>
#include <QHash>

#include <optional>

/// Makes local times of many times of the kernel's. One conversion computes with the rules of the time zone four times,
/// and where TZ is not set it looks each time whether "/etc/localtime" is still the same. Here a day is looked up once
/// and a time of it computed once. Made for one read: it does not see when the computer's zone is changed.
class LocalTimes
{
public:
    /// The same as toTime().
    QDateTime at(quint64 seconds);

private:
    std::optional<int> offsetOn(qint64 day);

    QHash<qint64, std::optional<int>> _offsets; // by the day since the epoch
};
