// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QtGlobal>

/// A length of time, split as people say it.
struct TimePeriod
{
    /// No time at all.
    TimePeriod() = default;
    /// Splits a count of seconds.
    explicit TimePeriod(quint32 secondCount);
    /// The same for a count that may be more than a period can be long: then it is as long as it can be.
    static TimePeriod ofSeconds(quint64 secondCount);

    /// Joins the parts, whatever they are; the parts of a split period give its count of seconds again.
    qint64 toSeconds() const;

    quint32 seconds = 0;
    quint32 minutes = 0;
    quint32 hours = 0;
    quint32 days = 0;
    quint32 weeks = 0;
    QString text; ///< for display, set by splitting: the parts that are not 0; empty for no time
};
