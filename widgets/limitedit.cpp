// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "limitedit.h"

LimitEdit::LimitEdit(Counted counted, QCheckBox *checkBox, QAbstractSpinBox *number, QToolButton *anyAmount)
    : _counted(counted)
    , _checkBox(checkBox)
    , _box(number)
    , _anyAmount(anyAmount)
{
    connect(checkBox, &QCheckBox::toggled, number, &QWidget::setEnabled);
    connect(checkBox, &QCheckBox::toggled, this, &LimitEdit::edited);
    connect(anyAmount, &QToolButton::clicked, this, &LimitEdit::openDialog);
}

LimitEdit::~LimitEdit()
{
    closeDialog();
}

quint64 LimitEdit::amount() const
{
    if (!isChecked())
        return 0;
    return looksAsFilled() || isRefused() ? _amount : numberInBoxes();
}

void LimitEdit::closeDialog()
{
    delete _dialog.data();
}

void LimitEdit::showAmount(quint64 amount)
{
    _amount = amount;
    fillBoxes(amount);
    _checkBox->setChecked(amount != 0);
    _box->setEnabled(_checkBox->isChecked());
    _wasChecked = _checkBox->isChecked();
}

void LimitEdit::openDialog()
{
    _dialog = new AmountDialog(_counted, _box->accessibleName(), amount(), _box->window());
    _dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(_dialog, &QDialog::accepted, this, [this] {
        if (_anyAmount->isEnabled())
            take(_dialog->amount());
        else
            Q_EMIT refused();
    });
    _dialog->open();
}

void LimitEdit::take(quint64 amount)
{
    QSignalBlocker once(this);
    showAmount(amount);
    once.unblock();
    Q_EMIT edited();
}
