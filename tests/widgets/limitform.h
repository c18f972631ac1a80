// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formwidget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QRandomGenerator>

/// The fields of an account's limits in its form, by their names, and how a hand that knows no system edits them.
namespace LimitForm
{

constexpr char SoftBlocks[] = "_softLimitBlocksDoubleSpinBox";
constexpr char HardBlocks[] = "_hardLimitBlocksDoubleSpinBox";
constexpr char SoftInodes[] = "_softLimitInodesSpinBox";
constexpr char HardInodes[] = "_hardLimitInodesSpinBox";
constexpr char BlocksTime[] = "_blocksDateTimeEdit";
constexpr char InodesTime[] = "_inodesDateTimeEdit";

/// The check box of a limit.
inline QCheckBox *checkBoxOf(const QWidget &form, const char *limit)
{
    QString name = QString::fromLatin1(limit);
    name.replace(QStringLiteral("DoubleSpinBox"), QStringLiteral("CheckBox"));
    name.replace(QStringLiteral("SpinBox"), QStringLiteral("CheckBox"));
    return formWidget<QCheckBox>(form, name);
}

/// The unit of a limit on space.
inline QComboBox *unitOf(const QWidget &form, const char *limit)
{
    QString name = QString::fromLatin1(limit);
    name.replace(QStringLiteral("BlocksDoubleSpinBox"), QStringLiteral("DimensionComboBox"));
    return formWidget<QComboBox>(form, name);
}

/// Another size, in any unit.
template<const char *limit>
void editSize(const QWidget &form, QRandomGenerator &random)
{
    checkBoxOf(form, limit)->setChecked(true);
    unitOf(form, limit)->setCurrentIndex(random.bounded(4));
    auto *number = formWidget<QDoubleSpinBox>(form, limit);
    const double before = number->value();
    while (number->value() == before)
        number->setValue(random.bounded(number->maximum()));
}

/// Another number of files.
template<const char *limit>
void editCount(const QWidget &form, QRandomGenerator &random)
{
    checkBoxOf(form, limit)->setChecked(true);
    auto *number = formWidget<QSpinBox>(form, limit);
    number->setValue(number->value() == 77 ? 78 : 77 + random.bounded(2) * 10);
}

/// Three days later, where a time runs.
template<const char *time>
void editMoment(const QWidget &form, QRandomGenerator & /*random*/)
{
    auto *edit = formWidget<QDateTimeEdit>(form, time);
    if (edit->isEnabled())
        edit->setDateTime(edit->dateTime().addDays(3));
}

} // namespace LimitForm
