// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "rowsorter.h"

#include <QPersistentModelIndex>
#include <QString>

#include <optional>
#include <vector>

class QAbstractItemModel;
class RowFilter;

/// A stretch of rows of the proxy, in the order of the proxy.
struct RowRun
{
    int first;
    int count;
};

/// The rows under one parent: which of the source's rows are shown, and where. It keeps what the order and the filter
/// were found by, all by source row, so that a change of one does not ask the source for the other again.
class ProxyMapping
{
public:
    ProxyMapping(const QAbstractItemModel &source, const QModelIndex &parent, ProxyMapping *above);

    QModelIndex sourceParent() const { return _sourceParent; }
    /// The mapping that the parent's row is in; null for the topmost.
    ProxyMapping *above() const { return _above; }

    int sourceRowCount() const { return static_cast<int>(_proxyRows.size()); }
    int shownCount() const { return static_cast<int>(_shown.size()); }
    int sourceRow(int proxyRow) const { return _shown[size_t(proxyRow)]; }
    /// -1 for a row that is not shown.
    int proxyRow(int sourceRow) const { return _proxyRows[size_t(sourceRow)]; }

    /// The source rows to show, in order, by the data as it was when it was last looked at.
    std::vector<int> wantedRows() const;
    const std::vector<int> &shownRows() const { return _shown; }
    void show(std::vector<int> rows);
    void insertShown(const RowRun &run, const std::vector<int> &from);
    void removeShown(const RowRun &run);
    /// The stretches of `wanted` that are not shown.
    std::vector<RowRun> runsToInsert(const std::vector<int> &wanted) const;
    /// The stretches of what is shown that are not accepted, last first.
    std::vector<RowRun> runsToRemove() const;

    /// Looks at the source again as far as that is needed for that order and that filter, at so many rows at most.
    /// False when nothing is left to look at; until use() everything stays as it was before.
    bool prepare(int column, const SortKeyMaker &maker, const RowFilter &filter, int rows);
    /// Takes over what was prepared. Column -1 is the source's order.
    void use(int column, Qt::SortOrder order);
    bool isAccepted(int sourceRow) const { return _accepted[size_t(sourceRow)]; }
    void setAccepted(int sourceRow, bool accepted);
    bool accepts(int sourceRow, const RowFilter &filter);

    /// The source's data changed: texts, and keys where the sorted column is among the columns, are asked anew.
    void forgetData(int firstRow, int lastRow, int firstColumn, int lastColumn);
    void forgetAccepted();

    /// The source's rows have changed. New ones are not shown yet, but are sorted and filtered.
    void sourceRowsInserted(int first, int last, const SortKeyMaker &maker, const RowFilter &filter);
    /// Rows that were not shown any more went.
    void sourceRowsRemoved(int first, int last);

private:
    /// What is being prepared. Any change of the source's rows or data begins it anew.
    struct Preparation
    {
        std::optional<RowSorter> sorter;
        std::vector<char> accepted;
    };

    bool prepareOrder(int column, const SortKeyMaker &maker, int rows);
    bool prepareFilter(const RowFilter &filter, int rows);
    SortKey keyAt(int sourceRow, int column, const SortKeyMaker &maker) const;
    const QString &textAt(int sourceRow, const RowFilter &filter);
    void renumberFrom(int proxyRow);

    const QAbstractItemModel &_source;
    QPersistentModelIndex _sourceParent;
    ProxyMapping *_above;

    std::vector<int> _shown;     // source row by proxy row
    std::vector<int> _proxyRows; // proxy row by source row
    std::vector<SortKey> _keys;  // of _sortColumn; none in the source's order
    std::vector<int> _ascending; // all source rows by their keys; none in the source's order
    std::vector<char> _accepted;
    std::vector<QString> _texts; // null where not asked yet; none without a filter text
    Preparation _next;
    int _sortColumn = -1;
    Qt::SortOrder _sortOrder = Qt::AscendingOrder;
    bool _isSorted = true;
    bool _isFiltered = false;
};
