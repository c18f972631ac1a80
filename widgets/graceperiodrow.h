// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "keepingspinbox.h"

#include <timeperiod.h>

#include <array>

/// Four spin boxes that together show a grace period. It keeps each one's suffix in the plural of its value.
class GracePeriodRow
{
public:
    using SpinBoxes = std::array<CountSpinBox *, 4>; ///< weeks, days, hours, minutes

    /// The name is what a screen reader calls the period: "Users, space".
    GracePeriodRow(const SpinBoxes &spinBoxes, const QString &name);

    const SpinBoxes &spinBoxes() const { return _spinBoxes; }
    /// Seconds are not shown, nor is what the spin boxes cannot hold.
    void show(const TimePeriod &period);
    /// What was handed to show() while the spin boxes say what they said then; else what they say, without seconds.
    TimePeriod period() const;

private:
    std::array<int, 4> values() const;

    SpinBoxes _spinBoxes; // not owned
    TimePeriod _read;
    std::array<int, 4> _shown = {};
};

/// A period in words, as the suffixes of the row have them: "1 week 2 days". Empty for no time.
QString gracePeriodText(const TimePeriod &period);
