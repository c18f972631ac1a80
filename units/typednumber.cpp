// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "typednumber.h"

#include <QRegularExpression>

namespace
{
/// The text with the digits and separators of all scripts in one form: a blank or an apostrophe for what stands
/// between thousands only.
QString inOneForm(const QString &text)
{
    QString plain = text.trimmed();
    for (QChar &each : plain) {
        if (each.digitValue() >= 0 && each.category() == QChar::Number_DecimalDigit)
            each = QLatin1Char(static_cast<char>('0' + each.digitValue()));
        else if (each.isSpace())
            each = QLatin1Char(' ');
        else if (each == QChar(0x2019) || each == QChar(0x066c)) // right quotation mark, Arabic thousands
            each = QLatin1Char('\'');
        else if (each == QChar(0x066b)) // Arabic decimals
            each = QLatin1Char('.');
    }
    return plain;
}
} // namespace

TypedNumber::TypedNumber(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral("^(\\d*)(?:[.,](\\d*))?$"));
    static const QRegularExpression grouped(
        QStringLiteral("^([1-9]\\d{0,2}([.,' ])\\d{3}(?:\\2\\d{3})*)(?:(?!\\2)[.,](\\d*))?$"));
    static const QRegularExpression eitherWay(QStringLiteral("^[1-9]\\d{0,2}[.,]\\d{3}$"));

    const QString number = inOneForm(text);
    if (number.isEmpty())
        return;
    if (eitherWay.match(number).hasMatch()) {
        fault = Ambiguous;
        return;
    }
    QString digits;
    if (const auto inGroups = grouped.match(number); inGroups.hasMatch()) {
        digits = inGroups.captured(1).remove(inGroups.captured(2));
        decimals = inGroups.captured(3);
    } else {
        const auto asItIs = plain.match(number);
        digits = asItIs.captured(1);
        decimals = asItIs.captured(2);
    }
    if (digits.isEmpty() && decimals.isEmpty()) {
        fault = NotANumber;
        return;
    }
    while (decimals.endsWith(QLatin1Char('0')))
        decimals.chop(1);
    bool fits = true;
    whole = digits.isEmpty() ? 0 : digits.toULongLong(&fits);
    fault = fits ? NoFault : TooLarge;
}
