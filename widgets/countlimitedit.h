// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "limitedit.h"

/// A limit on the number of files in a form: its box shows no more than 2,147,483,647 files.
class CountLimitEdit : public LimitEdit
{
    Q_OBJECT

public:
    CountLimitEdit(QCheckBox *checkBox, CountSpinBox *number, QToolButton *anyAmount);

    void show(quint64 limit) { showAmount(limit); }
    /// What was shown last, or what it was edited to.
    quint64 limit() const { return amount(); }

    bool isBeyond() const override { return isHidden(); }
    QString most() const override;
    std::optional<quint64> storedOtherwise() const override { return std::nullopt; }
    void setWarning(const QString &text) override { _number->setWarning(text); }

    /// What a spin box shows of a count.
    static int shownCount(quint64 count);

protected:
    quint64 numberInBoxes() const override { return static_cast<quint64>(_number->value()); }
    void fillBoxes(quint64 amount) override;
    bool areBoxesAsFilled() const override { return _number->value() == _firstNumber; }
    bool isNumberRefused() const override { return _number->isRefusing(); }

private:
    CountSpinBox *_number;
    int _firstNumber = 0; // as filled in
};
