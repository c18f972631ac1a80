// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "schedulevalidator.h"

#include "crontabreader.h"

ScheduleValidator::ScheduleValidator(QObject *parent)
    : QRegularExpressionValidator(QRegularExpression(CrontabReader::schedulePattern()), parent)
{}

QValidator::State ScheduleValidator::validate(QString &input, int &position) const
{
    const State state = QRegularExpressionValidator::validate(input, position);
    return state == Invalid && _isLenient ? Intermediate : state;
}
