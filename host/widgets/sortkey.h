// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCollator>
#include <QVariant>

#include <variant>

/// A number, exact for doubles and for all 64-bit integers: where two are the same double, the integers decide.
struct SortNumber
{
    double approximate;
    quint64 exact;
};

/// A moment in milliseconds since 1970.
struct SortMoment
{
    qint64 milliseconds;
};

/// What a cell is sorted by. The alternatives are in the order in which unlike cells stand; std::monostate is an empty
/// cell.
using SortKey = std::variant<SortNumber, SortMoment, QCollatorSortKey, std::monostate>;

/// Turns the values of cells into keys, texts in the order of the user's language (English in the C locale). Digits in
/// texts count as numbers.
class SortKeyMaker
{
public:
    SortKeyMaker();
    SortKey keyOf(const QVariant &value) const;

private:
    QCollator _collator;
};

inline bool isEmptyKey(const SortKey &key)
{
    return std::holds_alternative<std::monostate>(key);
}

/// Below, at or above 0 as `left` comes before `right`, is equal, or comes after it.
int compareKeys(const SortKey &left, const SortKey &right);
