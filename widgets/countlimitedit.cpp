// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "countlimitedit.h"

#include <QLineEdit>
#include <QLocale>

#include <limits>

CountLimitEdit::CountLimitEdit(QCheckBox *checkBox, QSpinBox *number)
    : _checkBox(checkBox)
    , _number(number)
{
    QObject::connect(checkBox, &QCheckBox::toggled, number, &QWidget::setEnabled);
    QObject::connect(number->findChild<QLineEdit *>(), &QLineEdit::textEdited, number, [this] { _isTyped = true; });
}

void CountLimitEdit::show(quint64 limit)
{
    _limit = limit;
    _number->setValue(shownCount(limit));
    _checkBox->setChecked(limit != 0);
    _number->setEnabled(_checkBox->isChecked());

    _wasChecked = _checkBox->isChecked();
    _firstNumber = _number->value();
    _isTyped = false;
}

quint64 CountLimitEdit::limit() const
{
    return isEdited() ? shownByForm() : _limit;
}

QString CountLimitEdit::hiddenLimit() const
{
    return isEdited() || _limit == shownByForm() ? QString() : QLocale().toString(_limit);
}

int CountLimitEdit::shownCount(quint64 count)
{
    return static_cast<int>(qMin<quint64>(count, std::numeric_limits<int>::max()));
}

bool CountLimitEdit::isEdited() const
{
    return _isTyped || _checkBox->isChecked() != _wasChecked || _number->value() != _firstNumber;
}

quint64 CountLimitEdit::shownByForm() const
{
    return _checkBox->isChecked() ? static_cast<quint64>(_number->value()) : 0;
}
