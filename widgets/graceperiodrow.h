// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSpinBox>

#include <array>

struct TimePeriod;

/// Four spin boxes that together show a grace period. It keeps each one's suffix in the plural of its value.
class GracePeriodRow
{
public:
    GracePeriodRow(QSpinBox *weeks, QSpinBox *days, QSpinBox *hours, QSpinBox *minutes);

    const std::array<QSpinBox *, 4> &spinBoxes() const { return _spinBoxes; }
    /// Seconds are not shown.
    void show(const TimePeriod &period);
    /// What is shown; no seconds.
    TimePeriod period() const;

private:
    std::array<QSpinBox *, 4> _spinBoxes; // not owned
};
