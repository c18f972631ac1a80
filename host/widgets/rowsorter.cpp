// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "rowsorter.h"

#include <algorithm>
#include <numeric>

RowSorter::RowSorter(int column, int rowCount)
    : _column(column)
    , _rows(std::size_t(rowCount))
{
    _keys.reserve(_rows.size());
    std::iota(_rows.begin(), _rows.end(), 0);
}

/// A stretch is merged with the one before it when it is as long, so that no row is merged more often than it must be.
bool RowSorter::step(int rows, const KeyOf &keyOf)
{
    const bool areKeysKnown = _keys.size() == _rows.size();
    const std::size_t count = _begins.size();
    const bool areAlike = count > 1 && _keys.size() - _begins[count - 1] >= _begins[count - 1] - _begins[count - 2];
    if (areAlike || (areKeysKnown && count > 1))
        mergeLastTwo();
    else if (!areKeysKnown)
        sortNext(std::min(rows, static_cast<int>(_rows.size() - _keys.size())), keyOf);
    else
        return false;
    return true;
}

void RowSorter::sortNext(int count, const KeyOf &keyOf)
{
    const auto begin = static_cast<int>(_keys.size());
    for (int row = begin; row < begin + count; ++row)
        _keys.push_back(keyOf(row));
    std::stable_sort(_rows.begin() + begin, _rows.begin() + begin + count,
                     [this](int left, int right) { return isBefore(left, right); });
    _begins.push_back(std::size_t(begin));
}

void RowSorter::mergeLastTwo()
{
    const auto middle = _rows.begin() + static_cast<std::ptrdiff_t>(_begins.back());
    _begins.pop_back();
    std::inplace_merge(_rows.begin() + static_cast<std::ptrdiff_t>(_begins.back()), middle,
                       _rows.begin() + static_cast<std::ptrdiff_t>(_keys.size()),
                       [this](int left, int right) { return isBefore(left, right); });
}

bool RowSorter::isBefore(int left, int right) const
{
    return compareKeys(_keys[std::size_t(left)], _keys[std::size_t(right)]) < 0;
}
