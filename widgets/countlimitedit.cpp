// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "countlimitedit.h"

#include <limits>

CountLimitEdit::CountLimitEdit(QCheckBox *checkBox, CountSpinBox *number, QToolButton *anyAmount)
    : LimitEdit(Counted::Files, checkBox, number, anyAmount)
    , _number(number)
{
    connect(number, qOverload<int>(&QSpinBox::valueChanged), this, &LimitEdit::edited);
    connect(number->line(), &QLineEdit::textEdited, this, &LimitEdit::edited);
}

QString CountLimitEdit::most() const
{
    return AmountDialog::words(Counted::Files, static_cast<quint64>(_number->maximum()));
}

int CountLimitEdit::shownCount(quint64 count)
{
    return static_cast<int>(qMin<quint64>(count, std::numeric_limits<int>::max()));
}

void CountLimitEdit::fillBoxes(quint64 amount)
{
    _number->showValue(shownCount(amount));
    _firstNumber = _number->value();
}
