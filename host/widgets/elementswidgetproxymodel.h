// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kraglobal.h>

#include <QAbstractProxyModel>

#include <memory>

/// Sorts and filters a TreeNodeModel of 100,000 rows without stalling the user interface.
///
/// - Sorts on SortRole by value, with the keys of the sorted column kept: numbers and dates as such, texts in the order
///   of the user's language. Empty cells come last in both directions; equal rows keep their order.
/// - A row is shown when its text matches and, while its container's display variant is not 0, when it carries
///   NodeFlag::InChosenVariant. A parent of a row whose text matches is shown too.
/// - A container whose rows were never read keeps its expander, so that it can be read.
/// - A change of the source's data sorts and filters anew, once the event loop turns.
/// - A change of the order or the filter is one layout change: selection, current and expanded rows survive as far as
///   they are still shown.
class KRA_EXPORT ElementsWidgetProxyModel : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit ElementsWidgetProxyModel(QObject *parent = nullptr);
    ~ElementsWidgetProxyModel() override;

    /// A row matches when one of its cells contains the text, in whatever case. An empty text matches all.
    void setFilterText(const QString &text);
    /// What was set, also while the rows are still shown as before.
    QString filterText() const;

    /// Sorts and filters more rows than that in slices, a turn of the event loop for each, and shows the new order or
    /// the new filter when all are done; until then it shows the rows as before. Without it everything is done at once.
    void workInSlices(int rows = 4096);
    /// Breaks headers between their words, which makes room for many columns.
    void setHeadersInLines(bool inLines);

    void setSourceModel(QAbstractItemModel *model) override;
    QModelIndex mapToSource(const QModelIndex &index) const override;
    QModelIndex mapFromSource(const QModelIndex &index) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Column -1 is the source's own order.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
