// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCheckBox>
#include <QSpinBox>

/// A limit on the number of files in a form: whether there is one, and its number.
///
/// The form shows no more than 2,147,483,647 files. A limit that was not edited stays what it was, as with
/// SizeLimitEdit.
class CountLimitEdit
{
public:
    /// The widgets are the form's and outlive this.
    CountLimitEdit(QCheckBox *checkBox, QSpinBox *number);
    CountLimitEdit(const CountLimitEdit &) = delete;
    CountLimitEdit &operator=(const CountLimitEdit &) = delete;

    QCheckBox *checkBox() const { return _checkBox; }
    QSpinBox *number() const { return _number; }

    void show(quint64 limit);
    /// What was shown last, or what it was edited to.
    quint64 limit() const;
    /// The limit in words while it is not the one that the form shows; else empty.
    QString hiddenLimit() const;

    /// What a spin box shows of a count.
    static int shownCount(quint64 count);

private:
    bool isEdited() const;
    quint64 shownByForm() const;

    QCheckBox *_checkBox;
    QSpinBox *_number;
    quint64 _limit = 0;
    // As filled in.
    bool _wasChecked = false;
    int _firstNumber = 0;
    bool _isTyped = false;
};
