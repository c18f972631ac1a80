// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "amountdialog.h"
#include "keepingspinbox.h"

#include <QCheckBox>
#include <QObject>
#include <QPointer>
#include <QToolButton>

#include <optional>

/// A limit in a form: whether there is one, its number, and a button that takes any number there is.
///
/// The form's boxes show less than a limit may hold. So as long as they look as they were filled in, the limit is the
/// one that they were filled in for, whether it was read or typed into the button's dialog; from then on it is what
/// they show. A number that cannot be the limit stays as typed and is refused.
class LimitEdit : public QObject
{
    Q_OBJECT

public:
    /// The widgets are the form's and outlive this. The number's accessible name names the limit.
    LimitEdit(Counted counted, QCheckBox *checkBox, QAbstractSpinBox *number, QToolButton *anyAmount);
    ~LimitEdit() override;

    QCheckBox *checkBox() const { return _checkBox; }
    QAbstractSpinBox *box() const { return _box; }
    Counted counted() const { return _counted; }

    /// In bytes, or in files; 0 is no limit. Of a number that is refused, the one before.
    quint64 amount() const;
    bool isChecked() const { return _checkBox->isChecked(); }
    /// The boxes cannot show the limit exactly.
    bool isHidden() const { return amount() != shownAmount() && !isRefused(); }
    /// The limit is beyond what the boxes can show of any.
    virtual bool isBeyond() const = 0;
    /// What is typed cannot be the limit.
    bool isRefused() const { return isChecked() && isNumberRefused(); }
    /// The most that the boxes take, in words.
    virtual QString most() const = 0;
    /// What is stored of the limit where that is seen to be another number: space is stored in whole blocks.
    virtual std::optional<quint64> storedOtherwise() const = 0;
    virtual void setWarning(const QString &text) = 0;

    /// Without its dialog: what was to be typed there is of another account or device.
    void closeDialog();
    bool isDialogOpen() const { return _dialog; }

Q_SIGNALS:
    /// The administrator changed something, typed something, or took an amount.
    void edited();
    /// The dialog's amount was not taken: the form cannot be edited any more.
    void refused();

protected:
    void showAmount(quint64 amount);
    /// The limit as the boxes say it.
    quint64 shownAmount() const { return isChecked() ? numberInBoxes() : 0; }
    bool looksAsFilled() const { return isChecked() == _wasChecked && !isRefused() && areBoxesAsFilled(); }

    /// The amount that the boxes show, ticked or not.
    virtual quint64 numberInBoxes() const = 0;
    virtual void fillBoxes(quint64 amount) = 0;
    virtual bool areBoxesAsFilled() const = 0;
    virtual bool isNumberRefused() const = 0;

private:
    void openDialog();
    void take(quint64 amount);

    Counted _counted;
    QCheckBox *_checkBox;
    QAbstractSpinBox *_box;
    QToolButton *_anyAmount;
    QPointer<AmountDialog> _dialog;
    quint64 _amount = 0;
    bool _wasChecked = false;
};
