// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "graceperiodrow.h"

#include "formhelpers.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{
struct Unit
{
    const char *suffix;
    quint32 TimePeriod::*count;
};

/// In the order of the row, which ends before the seconds.
const std::array<Unit, 5> units = {{
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " weeks"), &TimePeriod::weeks},
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " days"), &TimePeriod::days},
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " hours"), &TimePeriod::hours},
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " minutes"), &TimePeriod::minutes},
    {QT_TRANSLATE_N_NOOP("GeneralWidget", " seconds"), &TimePeriod::seconds},
}};

QString suffixFor(const Unit &unit, int count)
{
    return QCoreApplication::translate("GeneralWidget", unit.suffix, nullptr, count);
}
} // namespace

GracePeriodRow::GracePeriodRow(const SpinBoxes &spinBoxes, const QString &name)
    : _spinBoxes(spinBoxes)
{
    for (std::size_t i = 0; i < _spinBoxes.size(); ++i) {
        keepPluralSuffix(_spinBoxes[i], "GeneralWidget", units[i].suffix);
        //: For a screen reader. %1 is "Users, space", %2 is "weeks".
        _spinBoxes[i]->setAccessibleName(
            QCoreApplication::translate("GeneralWidget", "%1: %2").arg(name, suffixFor(units[i], 2).trimmed()));
    }
}

void GracePeriodRow::show(const TimePeriod &period)
{
    for (std::size_t i = 0; i < _spinBoxes.size(); ++i)
        _spinBoxes[i]->showValue(static_cast<int>(period.*units[i].count));
    _read = period;
    _shown = values();
}

TimePeriod GracePeriodRow::period() const
{
    const std::array<int, 4> now = values();
    if (now == _shown)
        return _read;
    TimePeriod period;
    for (std::size_t i = 0; i < now.size(); ++i)
        period.*units[i].count = static_cast<quint32>(now[i]);
    return TimePeriod(static_cast<quint32>(period.toSeconds())); // the same parts, and their text
}

std::array<int, 4> GracePeriodRow::values() const
{
    std::array<int, 4> values = {};
    std::transform(_spinBoxes.begin(), _spinBoxes.end(), values.begin(),
                   [](const CountSpinBox *spinBox) { return spinBox->value(); });
    return values;
}

QString gracePeriodText(const TimePeriod &period)
{
    QString text;
    for (const Unit &unit : units)
        if (const auto count = static_cast<int>(period.*unit.count))
            text += QLatin1Char(' ') + QString::number(count) + suffixFor(unit, count);
    return text.trimmed();
}
