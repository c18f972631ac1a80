// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memorysize.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>

class MemorySizeTransfer;

/// A limit on space in a form: whether there is one, its number and its unit.
///
/// The form shows less than a limit may hold: two decimals, and just under 4 GiB in whatever unit. So a limit that was
/// not edited is not taken from the form: it stays what it was. It counts as edited while the form shows anything other
/// than at first, and from the first key that was typed into its number.
class SizeLimitEdit
{
public:
    /// Fills the unit box. The widgets are the form's and outlive this.
    SizeLimitEdit(QCheckBox *checkBox, QDoubleSpinBox *number, QComboBox *unit, const MemorySizeTransfer &units);
    SizeLimitEdit(const SizeLimitEdit &) = delete;
    SizeLimitEdit &operator=(const SizeLimitEdit &) = delete;

    QCheckBox *checkBox() const { return _checkBox; }
    QDoubleSpinBox *number() const { return _number; }
    QComboBox *unit() const { return _unit; }

    void show(const MemorySize &limit);
    /// What was shown last, or what it was edited to.
    MemorySize limit() const;
    /// The limit in words while it is not the one that the form shows; else empty.
    QString hiddenLimit() const;

private:
    bool isEdited() const;
    MemorySize shownByForm() const;

    QCheckBox *_checkBox;
    QDoubleSpinBox *_number;
    QComboBox *_unit;
    MemorySize _limit;
    // As filled in.
    bool _wasChecked = false;
    double _firstNumber = 0;
    int _firstUnit = 0;
    bool _isTyped = false;
};
