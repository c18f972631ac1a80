// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "forcetimeedit.h"

namespace
{
/// The earliest day that a date-time edit can hold: it stands for no time.
QDate noDate()
{
    return {1752, 9, 14};
}

void blank(QDateTimeEdit *edit)
{
    edit->setSpecialValueText(QStringLiteral(" "));
    edit->setDate({1, 1, 1}); // before the earliest, where the edit comes to rest
}

bool isSameMinute(const QDateTime &left, const QDateTime &right)
{
    return left.date() == right.date() && left.time().hour() == right.time().hour() &&
           left.time().minute() == right.time().minute();
}
} // namespace

ForceTimeEdit::ForceTimeEdit(QDateTimeEdit *edit)
    : _edit(edit)
{}

void ForceTimeEdit::show(const QDateTime &moment)
{
    _moment = moment;
    _edit->setEnabled(moment.isValid());
    if (moment.isValid())
        _edit->setDateTime(moment.toLocalTime());
    else
        blank(_edit);
    _first = _edit->dateTime();
}

QDateTime ForceTimeEdit::moment() const
{
    if (_edit->date() == noDate())
        return {};
    return isSameMinute(_edit->dateTime(), _first) ? _moment : _edit->dateTime();
}
