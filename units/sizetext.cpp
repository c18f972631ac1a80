// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sizetext.h"

#include <QRegularExpression>

#include <limits>
#include <optional>

namespace
{
const char unitLetters[] = "KMGTPE"; // steps of 1024 each
constexpr int bitsPerStep = 10;

struct Parts
{
    TypedNumber number;
    QString unit; ///< in lower case
};

Parts split(const QString &text)
{
    const QString whole = text.trimmed();
    int end = whole.size();
    while (end > 0 && whole.at(end - 1).isLetter())
        --end;
    return {TypedNumber(whole.left(end)), whole.mid(end).toLower()};
}

/// How many times 1024 is in it; none for a unit that does not exist.
std::optional<int> stepsOf(const QString &unit)
{
    if (unit.isEmpty() || unit == QLatin1String("b") || unit == QLatin1String("byte") || unit == QLatin1String("bytes"))
        return 0;
    static const QRegularExpression larger(QStringLiteral("^([kmgtpe])(?:i?b)?$"));
    const auto match = larger.match(unit);
    if (!match.hasMatch())
        return std::nullopt;
    return QString::fromLatin1(unitLetters).toLower().indexOf(match.captured(1)) + 1;
}

std::optional<quint64> multiplied(quint64 number, quint64 factor)
{
    if (number > std::numeric_limits<quint64>::max() / factor)
        return std::nullopt;
    return number * factor;
}

struct Part
{
    quint64 whole;
    bool isCut; ///< there is something behind it
};

/// That part of the factor which the decimals of a number are, without its own decimals. Exact, as no float is.
Part partOf(quint64 factor, const QString &decimals)
{
    constexpr int mostDigits = 18; // ten times 10^18 still fits; digits behind them are less than two bytes
    quint64 numerator = decimals.left(mostDigits).toULongLong();
    quint64 denominator = 1;
    for (int digit = 0; digit < qMin(decimals.size(), mostDigits); ++digit)
        denominator *= 10;
    // By long division, a binary digit of the factor at a time: the product itself would not fit.
    quint64 quotient = 0;
    quint64 rest = 0;
    for (int bit = std::numeric_limits<quint64>::digits - 1; bit >= 0; --bit) {
        quotient *= 2;
        rest *= 2;
        if ((factor >> bit & 1U) != 0)
            rest += numerator;
        quotient += rest / denominator;
        rest %= denominator;
    }
    return {quotient, rest != 0 || decimals.size() > mostDigits};
}
} // namespace

SizeText SizeText::joined(const TypedNumber &number, quint64 factor)
{
    if (!number.isValid())
        return SizeText(number.fault);
    const std::optional<quint64> whole = multiplied(number.whole, factor);
    const Part part = partOf(factor, number.decimals);
    if (!whole || *whole > std::numeric_limits<quint64>::max() - part.whole)
        return SizeText(TypedNumber::TooLarge);
    SizeText text(*whole + part.whole);
    text._isCut = part.isCut;
    return text;
}

SizeText SizeText::ofSpace(const QString &text)
{
    const Parts parts = split(text);
    const std::optional<int> steps = stepsOf(parts.unit);
    if (parts.number.isValid() && !steps)
        return SizeText(TypedNumber::UnknownUnit);
    return joined(parts.number, quint64(1) << (bitsPerStep * steps.value_or(0)));
}

SizeText SizeText::ofFiles(const QString &text)
{
    const Parts parts = split(text);
    quint64 factor = 1;
    if (parts.unit == QLatin1String("k"))
        factor = 1000;
    else if (parts.unit == QLatin1String("m"))
        factor = 1000000;
    else if (parts.number.isValid() && !parts.unit.isEmpty())
        return SizeText(TypedNumber::UnknownUnit);
    const SizeText files = joined(parts.number, factor);
    return files._isCut ? SizeText(TypedNumber::NotWhole) : files;
}

QString SizeText::ofBytes(quint64 bytes)
{
    int steps = 0;
    for (; bytes != 0 && bytes % 1024 == 0 && unitLetters[steps] != '\0'; ++steps)
        bytes >>= bitsPerStep;
    QString unit = QStringLiteral("B");
    if (steps > 0)
        unit.prepend(QLatin1Char(unitLetters[steps - 1]));
    return QStringLiteral("%1 %2").arg(QString::number(bytes), unit);
}
