// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "graceperiodrow.h"

#include "pluralsuffix.h"

#include <timeperiod.h>

#include <QCoreApplication>

namespace
{
struct Unit
{
    const char *suffix;
    quint32 TimePeriod::*count;
};

/// In the order of the row.
const std::array<Unit, 4> units = {{
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " weeks"), &TimePeriod::weeks},
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " days"), &TimePeriod::days},
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " hours"), &TimePeriod::hours},
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " minutes"), &TimePeriod::minutes},
}};
} // namespace

GracePeriodRow::GracePeriodRow(QSpinBox *weeks, QSpinBox *days, QSpinBox *hours, QSpinBox *minutes)
    : _spinBoxes({weeks, days, hours, minutes})
{
    for (std::size_t i = 0; i < units.size(); ++i)
        PluralSuffix::keepFor(_spinBoxes[i], "GeneralWidget", units[i].suffix);
}

TimePeriod GracePeriodRow::period() const
{
    TimePeriod period;
    for (std::size_t i = 0; i < units.size(); ++i)
        period.*units[i].count = static_cast<quint32>(_spinBoxes[i]->value());
    return TimePeriod(static_cast<quint32>(period.toSeconds())); // the same parts, and their text
}

void GracePeriodRow::show(const TimePeriod &period)
{
    for (std::size_t i = 0; i < units.size(); ++i)
        _spinBoxes[i]->setValue(static_cast<int>(period.*units[i].count));
}
