// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sizelimitedit.h"

#include <limitrange.h>

#include <cmath>

namespace
{
constexpr double unitStep = 1024.0;
} // namespace

SizeLimitEdit::SizeLimitEdit(QCheckBox *checkBox, SizeSpinBox *number, QComboBox *unit, QToolButton *anyAmount)
    : LimitEdit(Counted::Space, checkBox, number, anyAmount)
    , _number(number)
    , _unit(unit)
{
    connect(unit, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int index) {
        // Whatever the unit, a limit in the boxes stays below 4 GiB. Two decimals are kept.
        _number->changeMaximum(4294967295.0 / std::pow(unitStep, index) - 1);
        Q_EMIT edited();
    });
    for (auto each = _units.units().cbegin(); each != _units.units().cend(); ++each)
        unit->addItem(each.value(), each.key());
    connect(checkBox, &QCheckBox::toggled, unit, &QWidget::setEnabled);
    connect(number, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &LimitEdit::edited);
    connect(number->line(), &QLineEdit::textEdited, this, &LimitEdit::edited);
}

void SizeLimitEdit::show(const MemorySize &limit)
{
    _read = limit;
    showAmount(limit.exactBytes());
}

MemorySize SizeLimitEdit::limit() const
{
    const quint64 bytes = amount();
    if (bytes == _read.exactBytes())
        return _read;
    const MemorySize shown = sizeInBoxes();
    return isChecked() && shown.bytes == bytes ? shown : MemorySize(_units, bytes);
}

bool SizeLimitEdit::isBeyond() const
{
    return inUnit(amount()) > _number->maximum();
}

QString SizeLimitEdit::most() const
{
    return QStringLiteral("%1 %2").arg(_number->shownText(_number->maximum()), _unit->currentText());
}

std::optional<quint64> SizeLimitEdit::storedOtherwise() const
{
    const quint64 stored = LimitRange::wholeBlocks(amount());
    const auto rounded = [this](quint64 bytes) { return _number->shownText(inUnit(bytes)); };
    if (stored == 0 || rounded(stored) == rounded(amount()))
        return std::nullopt;
    return stored;
}

void SizeLimitEdit::fillBoxes(quint64 amount)
{
    const MemorySize size(_units, amount);
    _unit->setCurrentText(size.unitName); // first, lest the number be held to the maximum of the unit before
    _number->showValue(size.value);
    _unit->setEnabled(amount != 0);
    _firstNumber = _number->value();
    _firstUnit = _unit->currentIndex();
}

bool SizeLimitEdit::areBoxesAsFilled() const
{
    return _unit->currentIndex() == _firstUnit && _number->value() == _firstNumber;
}

MemorySize SizeLimitEdit::sizeInBoxes() const
{
    MemorySize size;
    size.value = _number->value();
    size.unit = _unit->currentData().toInt();
    size.unitName = _unit->currentText();
    size.bytes = size.toBytes();
    return size;
}

double SizeLimitEdit::inUnit(quint64 bytes) const
{
    return static_cast<double>(bytes) / std::pow(unitStep, _unit->currentIndex());
}
