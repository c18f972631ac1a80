// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sortkey.h"

#include <functional>
#include <vector>

/// Sorts rows by their keys in steps, each of which takes about as long as the next: it sorts a stretch of rows, or
/// merges two stretches that are sorted. Equal rows keep their order.
class RowSorter
{
public:
    using KeyOf = std::function<SortKey(int row)>;

    RowSorter(int column, int rowCount);

    int column() const { return _column; }
    /// Does about as much as takes the keys of so many rows. False when there was nothing left to do.
    bool step(int rows, const KeyOf &keyOf);

    /// When all steps are done: the keys by row, and the rows by their keys.
    std::vector<SortKey> takeKeys() { return std::move(_keys); }
    std::vector<int> takeRows() { return std::move(_rows); }

private:
    void sortNext(int count, const KeyOf &keyOf);
    void mergeLastTwo();
    bool isBefore(int left, int right) const;

    int _column;
    std::vector<SortKey> _keys;
    std::vector<int> _rows;
    std::vector<std::size_t> _begins; // of the stretches that are sorted
};
