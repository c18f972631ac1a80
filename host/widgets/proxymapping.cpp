// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "proxymapping.h"

#include "rowfilter.h"

#include <noderole.h>

#include <QAbstractItemModel>

#include <algorithm>
#include <numeric>

namespace
{
template<typename Value>
auto at(std::vector<Value> &values, int position)
{
    return values.begin() + position;
}

/// Takes a gap of rows into account, or its closing with a negative count.
void shiftRows(std::vector<int> &rows, int from, int count)
{
    for (int &row : rows)
        if (row >= from)
            row += count;
}
} // namespace

ProxyMapping::ProxyMapping(const QAbstractItemModel &source, const QModelIndex &parent, ProxyMapping *above)
    : _source(source)
    , _sourceParent(parent)
    , _above(above)
    , _proxyRows(size_t(source.rowCount(parent)), -1)
    , _accepted(_proxyRows.size(), 1)
{}

std::vector<int> ProxyMapping::wantedRows() const
{
    std::vector<int> wanted;
    wanted.reserve(_accepted.size());
    const auto addAccepted = [this, &wanted](int row) {
        if (isAccepted(row))
            wanted.push_back(row);
    };
    if (_sortColumn < 0) {
        for (int row = 0; row < sourceRowCount(); ++row)
            addAccepted(row);
        return wanted;
    }
    if (_sortOrder == Qt::AscendingOrder) {
        std::for_each(_ascending.begin(), _ascending.end(), addAccepted);
        return wanted;
    }
    // Backwards group by group: equal rows keep their order, and empty cells stay last.
    const auto key = [this](int row) -> const SortKey & { return _keys[size_t(row)]; };
    const auto empties =
        std::partition_point(_ascending.begin(), _ascending.end(), [&key](int row) { return !isEmptyKey(key(row)); });
    for (auto groupEnd = empties; groupEnd != _ascending.begin();) {
        auto group = groupEnd - 1;
        while (group != _ascending.begin() && compareKeys(key(*(group - 1)), key(*group)) == 0)
            --group;
        std::for_each(group, groupEnd, addAccepted);
        groupEnd = group;
    }
    std::for_each(empties, _ascending.end(), addAccepted);
    return wanted;
}

void ProxyMapping::show(std::vector<int> rows)
{
    _shown = std::move(rows);
    std::fill(_proxyRows.begin(), _proxyRows.end(), -1);
    renumberFrom(0);
}

void ProxyMapping::insertShown(const RowRun &run, const std::vector<int> &from)
{
    const auto first = from.begin() + run.first;
    _shown.insert(at(_shown, run.first), first, first + run.count);
    renumberFrom(run.first);
}

void ProxyMapping::removeShown(const RowRun &run)
{
    for (int row = run.first; row < run.first + run.count; ++row)
        _proxyRows[size_t(sourceRow(row))] = -1;
    _shown.erase(at(_shown, run.first), at(_shown, run.first + run.count));
    renumberFrom(run.first);
}

std::vector<RowRun> ProxyMapping::runsToInsert(const std::vector<int> &wanted) const
{
    std::vector<RowRun> runs;
    for (size_t i = 0; i < wanted.size(); ++i) {
        if (proxyRow(wanted[i]) >= 0)
            continue;
        if (!runs.empty() && runs.back().first + runs.back().count == int(i))
            ++runs.back().count;
        else
            runs.push_back({int(i), 1});
    }
    return runs;
}

std::vector<RowRun> ProxyMapping::runsToRemove() const
{
    std::vector<RowRun> runs;
    for (int row = shownCount() - 1; row >= 0; --row) {
        if (isAccepted(sourceRow(row)))
            continue;
        if (!runs.empty() && runs.back().first == row + 1) {
            --runs.back().first;
            ++runs.back().count;
        } else {
            runs.push_back({row, 1});
        }
    }
    return runs;
}

bool ProxyMapping::prepare(int column, const SortKeyMaker &maker, const RowFilter &filter, int rows)
{
    return prepareOrder(column, maker, rows) || prepareFilter(filter, rows);
}

bool ProxyMapping::prepareOrder(int column, const SortKeyMaker &maker, int rows)
{
    if (column < 0 || (_isSorted && column == _sortColumn)) {
        _next.sorter.reset();
        return false;
    }
    if (!_next.sorter || _next.sorter->column() != column)
        _next.sorter.emplace(column, sourceRowCount());
    return _next.sorter->step(rows, [this, column, &maker](int row) { return keyAt(row, column, maker); });
}

bool ProxyMapping::prepareFilter(const RowFilter &filter, int rows)
{
    if (_isFiltered)
        return false;
    std::vector<char> &accepted = _next.accepted;
    if (!filter.hasText())
        _texts.clear();
    if (!filter.hasText() && !filter.narrowsVariant(_sourceParent)) {
        accepted.assign(_accepted.size(), char(true));
        return false;
    }
    const size_t end = std::min(accepted.size() + size_t(rows), _accepted.size());
    if (accepted.size() == end)
        return false;
    while (accepted.size() < end)
        accepted.push_back(accepts(int(accepted.size()), filter));
    return true;
}

void ProxyMapping::use(int column, Qt::SortOrder order)
{
    if (_next.sorter) {
        _keys = _next.sorter->takeKeys();
        _ascending = _next.sorter->takeRows();
    } else if (column < 0) {
        _keys.clear();
        _ascending.clear();
    }
    if (!_isFiltered)
        _accepted.swap(_next.accepted);
    _next = {};
    _sortColumn = column;
    _sortOrder = order;
    _isSorted = true;
    _isFiltered = true;
}

/// What was prepared for the row is out of date, too.
void ProxyMapping::setAccepted(int sourceRow, bool accepted)
{
    _accepted[size_t(sourceRow)] = accepted;
    if (size_t(sourceRow) < _next.accepted.size())
        _next.accepted[size_t(sourceRow)] = accepted;
}

bool ProxyMapping::accepts(int sourceRow, const RowFilter &filter)
{
    if (filter.narrowsVariant(_sourceParent) && !filter.isInVariant(_source.index(sourceRow, 0, _sourceParent)))
        return false;
    return !filter.hasText() || filter.matches(textAt(sourceRow, filter)) ||
           filter.matchesBelow(_source.index(sourceRow, 0, _sourceParent));
}

void ProxyMapping::forgetData(int firstRow, int lastRow, int firstColumn, int lastColumn)
{
    if (firstColumn <= _sortColumn && _sortColumn <= lastColumn)
        _isSorted = false;
    _isFiltered = false;
    _next = {};
    if (!_texts.empty())
        std::fill(at(_texts, firstRow), at(_texts, lastRow + 1), QString());
}

void ProxyMapping::forgetAccepted()
{
    _isFiltered = false;
    _next.accepted.clear();
}

void ProxyMapping::sourceRowsInserted(int first, int last, const SortKeyMaker &maker, const RowFilter &filter)
{
    const int count = last - first + 1;
    _next = {};
    shiftRows(_shown, first, count);
    shiftRows(_ascending, first, count);
    _proxyRows.insert(at(_proxyRows, first), size_t(count), -1);
    _accepted.insert(at(_accepted, first), size_t(count), char(false));
    if (!_texts.empty())
        _texts.insert(at(_texts, first), size_t(count), QString());
    for (int row = first; row <= last; ++row)
        setAccepted(row, accepts(row, filter));
    if (_sortColumn < 0)
        return;
    std::vector<SortKey> newKeys;
    newKeys.reserve(size_t(count));
    for (int row = first; row <= last; ++row)
        newKeys.push_back(keyAt(row, _sortColumn, maker));
    _keys.insert(at(_keys, first), std::make_move_iterator(newKeys.begin()), std::make_move_iterator(newKeys.end()));
    // Equal rows stand in the order of the source, wherever in it the new ones are.
    const auto isBefore = [this](int left, int right) {
        const int order = compareKeys(_keys[size_t(left)], _keys[size_t(right)]);
        return order < 0 || (order == 0 && left < right);
    };
    const int known = static_cast<int>(_ascending.size());
    _ascending.resize(_proxyRows.size());
    std::iota(at(_ascending, known), _ascending.end(), first);
    std::sort(at(_ascending, known), _ascending.end(), isBefore);
    std::inplace_merge(_ascending.begin(), at(_ascending, known), _ascending.end(), isBefore);
}

void ProxyMapping::sourceRowsRemoved(int first, int last)
{
    const int count = last - first + 1;
    _next = {};
    const auto isGone = [first, last](int row) { return row >= first && row <= last; };
    _ascending.erase(std::remove_if(_ascending.begin(), _ascending.end(), isGone), _ascending.end());
    shiftRows(_ascending, first, -count);
    shiftRows(_shown, first, -count);
    const auto close = [first, last](auto &values) {
        if (!values.empty())
            values.erase(at(values, first), at(values, last + 1));
    };
    close(_proxyRows);
    close(_keys);
    close(_accepted);
    close(_texts);
}

SortKey ProxyMapping::keyAt(int sourceRow, int column, const SortKeyMaker &maker) const
{
    return maker.keyOf(_source.index(sourceRow, column, _sourceParent).data(SortRole));
}

const QString &ProxyMapping::textAt(int sourceRow, const RowFilter &filter)
{
    if (_texts.empty())
        _texts.resize(_proxyRows.size());
    QString &text = _texts[size_t(sourceRow)];
    if (text.isNull()) {
        text = filter.textOf(sourceRow, _sourceParent, _source.columnCount(_sourceParent));
        if (text.isNull())
            text = QLatin1String(""); // asked, and empty
    }
    return text;
}

void ProxyMapping::renumberFrom(int proxyRow)
{
    for (int row = proxyRow; row < shownCount(); ++row)
        _proxyRows[size_t(sourceRow(row))] = row;
}
