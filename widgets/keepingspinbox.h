// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <plaintooltip.h>
#include <typednumber.h>

#include <QAction>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QStyle>

#include <optional>

/// A spin box that refuses no key and changes no text: what cannot be its value stays as it was typed, and
/// hasAcceptableInput() is false. Its value is then the one before. A decimal point or comma is read as TypedNumber
/// reads it, in every language.
///
/// Without the Q_OBJECT macro, so that it is to the outside what it extends.
template<typename SpinBox, typename Number>
class KeepingSpinBox : public SpinBox
{
public:
    explicit KeepingSpinBox(QWidget *parent = nullptr)
        : SpinBox(parent)
    {
        QObject::connect(this->lineEdit(), &QLineEdit::textEdited, this,
                         [this](const QString &text) { keep(numberIn(text) ? QString() : numberText(text)); });
        // What is kept was typed, also where the box itself writes it again.
        QObject::connect(this->lineEdit(), &QLineEdit::textChanged, this, [this] {
            if (isRefusing())
                this->lineEdit()->setModified(true);
        });
        // Emitted by the key Return as well, without a change.
        QObject::connect(this, qOverload<Number>(&SpinBox::valueChanged), this, [this](Number value) {
            if (value != _valueBefore)
                forgetKept();
        });
    }

    /// As it shows a value, whatever it shows now.
    QString shownText(Number value) const { return SpinBox::textFromValue(value); }

    /// What is typed cannot be the value. A box that was emptied is not meant: its value comes back when it is left.
    bool isRefusing() const { return !_kept.isEmpty(); }

    QLineEdit *line() const { return this->lineEdit(); }

    /// In the place of whatever is typed.
    void showValue(Number value)
    {
        forgetKept();
        this->setValue(value);
        this->lineEdit()->setModified(false);
    }

    /// What is shown stays and is judged anew, where setMaximum() alone would put the maximum in its place.
    void changeMaximum(Number maximum)
    {
        const QString shown = numberText(this->lineEdit()->text());
        this->setMaximum(maximum);
        if (const std::optional<Number> number = numberIn(shown)) {
            showValue(*number);
        } else if (!shown.isEmpty()) {
            keep(shown);
            this->lineEdit()->setText(this->prefix() + shown + this->suffix());
            this->lineEdit()->setModified(true);
        }
    }

    /// Shows a sign of warning in the box, with this text, and tells it to screen readers. Empty: none.
    void setWarning(const QString &text)
    {
        if (!_warning) {
            if (text.isEmpty())
                return;
            const QIcon icon = this->style()->standardIcon(QStyle::SP_MessageBoxWarning);
            _warning = this->lineEdit()->addAction(icon, QLineEdit::TrailingPosition);
            _description = this->accessibleDescription();
        }
        _warning->setVisible(!text.isEmpty());
        _warning->setToolTip(plainToolTip(text));
        this->setAccessibleDescription(text.isEmpty() ? _description : text);
    }

    QValidator::State validate(QString &text, int & /*position*/) const override
    {
        if (numberIn(text))
            return QValidator::Acceptable;
        return isSuffixCut(text) ? QValidator::Invalid : QValidator::Intermediate;
    }
    void fixup(QString & /*text*/) const override {}
    QString textFromValue(Number value) const override
    {
        return _kept.isEmpty() ? SpinBox::textFromValue(value) : _kept;
    }
    Number valueFromText(const QString &text) const override { return numberIn(text).value_or(this->value()); }

private:
    void keep(const QString &text)
    {
        _kept = text;
        _valueBefore = this->value();
    }

    void forgetKept()
    {
        if (_kept.isEmpty())
            return;
        _kept.clear();
        this->lineEdit()->setText(this->prefix() + textFromValue(this->value()) + this->suffix());
    }

    QString numberText(const QString &text) const
    {
        const int suffix = text.endsWith(this->suffix()) ? this->suffix().size() : 0;
        return text.left(text.size() - suffix).trimmed();
    }

    /// The value that a text stands for.
    std::optional<Number> numberIn(const QString &text) const
    {
        const TypedNumber typed(numberText(text));
        if (!typed.isValid() || typed.decimals.size() > mostDecimals())
            return std::nullopt;
        const double number = QStringLiteral("%1.%2").arg(typed.whole).arg(typed.decimals).toDouble();
        if (number < this->minimum() || number > this->maximum())
            return std::nullopt;
        return static_cast<Number>(number);
    }

    int mostDecimals() const
    {
        if constexpr (std::is_base_of_v<QDoubleSpinBox, SpinBox>)
            return this->decimals();
        return 0;
    }

    /// A key in the suffix is none in the number.
    bool isSuffixCut(const QString &text) const
    {
        const QString number = numberText(text);
        int end = number.size();
        while (end > 0 && !number.at(end - 1).isDigit())
            --end;
        const QString rest = number.mid(end).trimmed();
        return !rest.isEmpty() && this->suffix().contains(rest);
    }

    QString _kept; // what is typed while it cannot be the value
    Number _valueBefore = 0;
    QAction *_warning = nullptr;
    QString _description; // without a warning
};

class SizeSpinBox : public KeepingSpinBox<QDoubleSpinBox, double>
{
    using KeepingSpinBox::KeepingSpinBox;
};

class CountSpinBox : public KeepingSpinBox<QSpinBox, int>
{
    using KeepingSpinBox::KeepingSpinBox;
};
