// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sortkey.h"

#include <QDateTime>

#include <cmath>

namespace
{
template<typename Value>
int compareValues(Value left, Value right)
{
    return left < right ? -1 : (right < left ? 1 : 0);
}

SortKey numberKey(double value)
{
    if (std::isnan(value))
        return std::monostate();
    // Only integers need the exact half; a double's own is what the same integer would have.
    quint64 exact = 0;
    if (value >= 0 && value < std::ldexp(1.0, 64))
        exact = static_cast<quint64>(value);
    else if (value < 0 && value >= -std::ldexp(1.0, 63))
        exact = static_cast<quint64>(static_cast<qint64>(value));
    return SortNumber{value, exact};
}

SortKey momentKey(const QDateTime &moment)
{
    if (!moment.isValid())
        return std::monostate();
    return SortMoment{moment.toMSecsSinceEpoch()};
}

int compareSame(const SortNumber &left, const SortNumber &right)
{
    const int coarse = compareValues(left.approximate, right.approximate);
    return coarse != 0 ? coarse : compareValues(left.exact, right.exact);
}

int compareSame(const SortMoment &left, const SortMoment &right)
{
    return compareValues(left.milliseconds, right.milliseconds);
}

int compareSame(const QCollatorSortKey &left, const QCollatorSortKey &right)
{
    return left.compare(right);
}

int compareSame(std::monostate /*left*/, std::monostate /*right*/)
{
    return 0;
}
} // namespace

SortKeyMaker::SortKeyMaker()
{
    // The C locale knows no language, and so no numbers in texts; root often has it.
    if (_collator.locale().language() == QLocale::C)
        _collator.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    _collator.setNumericMode(true);
}

SortKey SortKeyMaker::keyOf(const QVariant &value) const
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::UnknownType:
        return std::monostate();
    case QMetaType::Bool:
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong: {
        const quint64 number = value.toULongLong();
        return SortNumber{static_cast<double>(number), number};
    }
    case QMetaType::SChar:
    case QMetaType::Char:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong: {
        const qint64 number = value.toLongLong();
        return SortNumber{static_cast<double>(number), static_cast<quint64>(number)};
    }
    case QMetaType::Float:
    case QMetaType::Double:
        return numberKey(value.toDouble());
    case QMetaType::QDate:
        return momentKey(value.toDate().startOfDay());
    case QMetaType::QDateTime:
        return momentKey(value.toDateTime());
    default:
        break;
    }
    const QString text = value.toString();
    if (text.isEmpty())
        return std::monostate();
    return _collator.sortKey(text);
}

int compareKeys(const SortKey &left, const SortKey &right)
{
    if (left.index() != right.index())
        return compareValues(left.index(), right.index());
    return std::visit(
        [&right](const auto &value) { return compareSame(value, std::get<std::decay_t<decltype(value)>>(right)); },
        left);
}
