// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "limitedit.h"

#include <memorysizetransfer.h>

#include <memorysize.h>

#include <QComboBox>

/// A limit on space in a form: its boxes show two decimals, and just under 4 GiB in whatever unit.
class SizeLimitEdit : public LimitEdit
{
    Q_OBJECT

public:
    /// Fills the unit box.
    SizeLimitEdit(QCheckBox *checkBox, SizeSpinBox *number, QComboBox *unit, QToolButton *anyAmount);

    void show(const MemorySize &limit);
    /// What was shown last, or what it was edited to.
    MemorySize limit() const;

    QComboBox *unit() const { return _unit; }

    bool isBeyond() const override;
    QString most() const override;
    std::optional<quint64> storedOtherwise() const override;
    void setWarning(const QString &text) override { _number->setWarning(text); }

protected:
    quint64 numberInBoxes() const override { return sizeInBoxes().bytes; }
    void fillBoxes(quint64 amount) override;
    bool areBoxesAsFilled() const override;
    bool isNumberRefused() const override { return _number->isRefusing(); }

private:
    MemorySize sizeInBoxes() const;
    double inUnit(quint64 bytes) const;

    SizeSpinBox *_number;
    QComboBox *_unit;
    MemorySizeTransfer _units;
    MemorySize _read;
    // As filled in.
    double _firstNumber = 0;
    int _firstUnit = 0;
};
