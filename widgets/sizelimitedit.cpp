// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sizelimitedit.h"

#include <memorysizetransfer.h>

#include <QLineEdit>
#include <QLocale>

#include <cmath>

namespace
{
/// A size in the largest unit that divides it.
QString exactText(quint64 bytes)
{
    constexpr quint64 step = 1024;
    int unit = MemorySizeTransfer::Bytes;
    for (; bytes != 0 && bytes % step == 0 && unit < MemorySizeTransfer::Gb; ++unit)
        bytes /= step;
    return QStringLiteral("%1 %2").arg(QLocale().toString(bytes), MemorySizeTransfer::unitName(unit));
}
} // namespace

SizeLimitEdit::SizeLimitEdit(QCheckBox *checkBox, QDoubleSpinBox *number, QComboBox *unit,
                             const MemorySizeTransfer &units)
    : _checkBox(checkBox)
    , _number(number)
    , _unit(unit)
{
    QObject::connect(unit, qOverload<int>(&QComboBox::currentIndexChanged), number, [number](int index) {
        // Whatever the unit, a limit stays below 4 GiB. Two decimals are kept.
        number->setMaximum(4294967295.0 / std::pow(1024.0, index) - 1);
    });
    for (auto each = units.units().cbegin(); each != units.units().cend(); ++each)
        unit->addItem(each.value(), each.key());
    QObject::connect(checkBox, &QCheckBox::toggled, number, &QWidget::setEnabled);
    QObject::connect(checkBox, &QCheckBox::toggled, unit, &QWidget::setEnabled);
    QObject::connect(number->findChild<QLineEdit *>(), &QLineEdit::textEdited, number, [this] { _isTyped = true; });
}

void SizeLimitEdit::show(const MemorySize &limit)
{
    _limit = limit;
    _unit->setCurrentText(limit.unitName); // first, lest the number be held to the maximum of the unit before
    _number->setValue(limit.value);
    _checkBox->setChecked(limit.value > 0);
    _number->setEnabled(_checkBox->isChecked());
    _unit->setEnabled(_checkBox->isChecked());

    _wasChecked = _checkBox->isChecked();
    _firstNumber = _number->value();
    _firstUnit = _unit->currentIndex();
    _isTyped = false;
}

MemorySize SizeLimitEdit::limit() const
{
    return isEdited() ? shownByForm() : _limit;
}

QString SizeLimitEdit::hiddenLimit() const
{
    const quint64 bytes = _limit.toBytes();
    return isEdited() || bytes == shownByForm().toBytes() ? QString() : exactText(bytes);
}

bool SizeLimitEdit::isEdited() const
{
    return _isTyped || _checkBox->isChecked() != _wasChecked || _unit->currentIndex() != _firstUnit ||
           _number->value() != _firstNumber;
}

MemorySize SizeLimitEdit::shownByForm() const
{
    MemorySize size;
    if (!_checkBox->isChecked())
        return size;
    size.value = _number->value();
    size.unit = _unit->currentData().toInt();
    size.unitName = _unit->currentText();
    size.bytes = size.toBytes();
    return size;
}
